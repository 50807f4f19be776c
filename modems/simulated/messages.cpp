#include "messages.h"

namespace simulated
{
namespace
{

// Fills one message to the last of its 160 characters.
const char *const one_hundred_sixty =
    "This message is as long as a single one can be: one hundred and sixty characters, counted "
    "with every space and full stop. The last word ends exactly here, done.";

// Arrives in many parts and is stored as one; longer than any reader's field.
std::string long_text()
{
    std::string text = "Terms of the test tariff.";
    for (int clause = 1; clause <= 60; ++clause)
        text += " Clause " + std::to_string(clause) +
                ": this sentence stands for a long and tiresome legal clause.";
    return text;
}

} // namespace

Messages::Messages()
    : all_{
          {1, false, "Test Network", "24/03/01,08:00:05+04",
           "Welcome to Test Network. Your number is +12025550100."},
          {2, false, "+12025550142", "24/03/01,09:12:40+04", one_hundred_sixty},
          {3, true, "+12025550142", "24/03/02,18:30:11+04", "Battery is 100% full, signal at 5%%."},
          {5, true, "+12025550177", "24/03/03,07:45:00+04",
           "Grüße aus Zürich: 20 € für Kaffee und Kuchen ☕"},
          {6, false, "Test Network", "24/03/04,12:00:00+04", long_text()},
          {8, true, "+12025550119", "24/03/05,21:05:59+04", "Meet at the harbour? %n %s %d %"},
      }
{
}

CmeError Messages::remove(int index, DeleteFlag flag)
{
    const auto matches = [&](const Message &message) {
        if (flag == DeleteFlag::one)
            return message.index == index;
        return flag == DeleteFlag::all || !message.unread;
    };
    const bool any = std::erase_if(all_, matches) > 0;
    return any || flag != DeleteFlag::one ? CmeError::ok : CmeError::invalid_index;
}

void Messages::mark_all_read()
{
    for (Message &message : all_)
        message.unread = false;
}

void Messages::mark_read(int index)
{
    for (Message &message : all_)
        if (message.index == index)
            message.unread = false;
}

void Messages::send(std::string sender, std::string time, std::string text)
{
    waiting_.push_back({0, true, std::move(sender), std::move(time), std::move(text)});
}

void Messages::deliver()
{
    int index = 1;
    auto position = all_.begin();
    while (!waiting_.empty() && all_.size() < capacity) {
        for (; position != all_.end() && position->index == index; ++position)
            ++index;
        waiting_.front().index = index;
        position = all_.insert(position, std::move(waiting_.front()));
        waiting_.pop_front();
        ++delivered_;
    }
}

} // namespace simulated
