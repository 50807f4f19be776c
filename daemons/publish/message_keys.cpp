#include "message_keys.h"

#include "publish_value.h"

#include <algorithm>

namespace sim
{
namespace
{

// Readers take "%%" for one percent sign.
std::string percent_doubled(std::string_view text)
{
    std::string out;
    for (const char c : text)
        out.append(c == '%' ? 2 : 1, c);
    return out;
}

void put(const char *field, std::size_t number, const std::string &value)
{
    publish_value("lte_mobile_sms_" + std::string(field) + "_" + std::to_string(number), value);
}

void put_message(std::size_t number, const Message &message)
{
    put("id", number, std::to_string(message.index));
    put("stat", number, message.unread ? "REC UNREAD" : "REC READ");
    put("da", number, percent_doubled(message.sender));
    put("scts", number, percent_doubled(message.time));
    put("text", number, percent_doubled(message.text));
}

void clear_message(std::size_t number)
{
    for (const char *field : {"id", "stat", "da", "scts", "text"})
        put(field, number, "");
}

} // namespace

void publish_messages(const std::vector<Message> &list)
{
    const auto unread =
        std::count_if(list.begin(), list.end(), [](const Message &m) { return m.unread; });
    for (std::size_t i = 0; i < list.size(); ++i)
        put_message(i + 1, list[i]);
    publish_value("lte_mobile_sms_counts", std::to_string(list.size()));
    publish_value("lte_mobile_sms_unreads", std::to_string(unread));
    for (std::size_t i = list.size(); i < Messages::capacity; ++i)
        clear_message(i + 1);
}

} // namespace sim
