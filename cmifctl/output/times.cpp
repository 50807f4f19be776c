#include "times.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace cmifctl
{

std::optional<std::string> iso_time(std::string_view stamp)
{
    const std::string text(stamp);
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, quarters = 0, used = 0;
    char sign = 0;
    const int fields = std::sscanf(text.c_str(), "%2d/%2d/%2d,%2d:%2d:%2d%c%2d%n", &year, &month,
                                   &day, &hour, &minute, &second, &sign, &quarters, &used);
    const bool in_range = year >= 0 && month >= 1 && month <= 12 && day >= 1 && day <= 31 &&
                          hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 &&
                          second <= 60 && quarters >= 0;
    if (fields != 8 || static_cast<std::size_t>(used) != text.size() || !in_range ||
        (sign != '+' && sign != '-'))
        return std::nullopt;
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "20%02d-%02d-%02dT%02d:%02d:%02d%c%02d:%02d", year,
                  month, day, hour, minute, second, sign, quarters / 4, quarters % 4 * 15);
    return buffer.data();
}

std::string short_time(std::string_view stamp)
{
    std::string time = iso_time(stamp).value_or("");
    std::replace(time.begin(), time.end(), 'T', ' ');
    return time.substr(0, std::string_view("2024-03-01 08:00").size());
}

std::string duration(long long seconds)
{
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%02lld:%02lld:%02lld", seconds / 3600 % 24,
                  seconds / 60 % 60, seconds % 60);
    const long long days = seconds / 86400;
    return (days > 0 ? std::to_string(days) + " d " : "") + buffer.data();
}

} // namespace cmifctl
