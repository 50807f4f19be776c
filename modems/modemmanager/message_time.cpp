#include "message_time.h"

#include <cstdio>
#include <cstdlib>

namespace modem_manager
{

std::string service_centre_time(const std::string &iso)
{
    constexpr int of_date_and_time = 6;
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, end = 0;
    if (std::sscanf(iso.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d%n", &year, &month, &day, &hour, &minute,
                    &second, &end) != of_date_and_time)
        return iso;
    char sign = '+';
    int hours = 0, minutes = 0;
    std::sscanf(iso.c_str() + end, "%c%2d:%2d", &sign, &hours, &minutes);
    const int quarters = hours * 4 + minutes / 15;
    char text[64];
    const int length =
        std::snprintf(text, sizeof text, "%02d/%02d/%02d,%02d:%02d:%02d%c%02d", year % 100, month,
                      day, hour, minute, second, sign == '-' ? '-' : '+', quarters);
    return {text, static_cast<std::size_t>(length)};
}

} // namespace modem_manager
