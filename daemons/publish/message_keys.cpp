#include "message_keys.h"

#include "daemons/digits.h"
#include "publish_value.h"

#include <algorithm>
#include <string_view>

namespace daemons
{
namespace
{

constexpr const char *count_key = "lte_mobile_sms_counts";
constexpr const char *unread_key = "lte_mobile_sms_unreads";

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

// The store is open to every program: a count beyond what a modem and a SIM hold is not a list's.
std::size_t published_count()
{
    constexpr int max_count = 1000;
    return static_cast<std::size_t>(
        std::clamp(to_number(tarnNvramConfig_get(count_key)).value_or(0), 0, max_count));
}

} // namespace

void publish_messages(const std::vector<Message> &list)
{
    const std::size_t before = published_count();
    const auto unread = std::count_if(list.begin(), list.end(),
                                      [](const Message &message) { return message.unread; });
    for (std::size_t i = 0; i < list.size(); ++i)
        put_message(i + 1, list[i]);
    publish_value(count_key, std::to_string(list.size()));
    publish_value(unread_key, std::to_string(unread));
    for (std::size_t i = list.size(); i < before; ++i)
        clear_message(i + 1);
}

} // namespace daemons
