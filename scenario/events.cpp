#include "events.h"

#include <algorithm>
#include <span>

namespace scenario
{
namespace
{

constexpr std::string_view names[] = {
    "registered", "unregistered", "connected", "disconnected", "sim-ready",
    "searching",  "search-done",  "sms",       "down",         "up"};
constexpr std::string_view requests[] = {"request", "qmi-request"}; // each with a code

bool has(std::span<const std::string_view> list, const std::string &name)
{
    return std::find(list.begin(), list.end(), name) != list.end();
}

} // namespace

std::string take_event(Words &words)
{
    for (const std::string_view one : names)
        words.offer(one);
    for (const std::string_view one : requests)
        words.offer(one);
    std::string rule = one_of(names);
    for (const std::string_view one : requests)
        rule.append(", ").append(one).append(" N");
    std::string name = words.take("the event", rule).text;
    if (has(names, name))
        return name;
    if (has(requests, name))
        return name + ' ' + std::to_string(words.take_number("the request's code", 1, 255));
    words.refuse("the event", rule);
}

} // namespace scenario
