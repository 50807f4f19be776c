// Times as the modem gives them, made readable.
#ifndef CMIFCTL_OUTPUT_TIMES_H
#define CMIFCTL_OUTPUT_TIMES_H

#include <optional>
#include <string>
#include <string_view>

namespace cmifctl
{

// A service centre time stamp "yy/MM/dd,hh:mm:ss±zz" (zz in quarters of an hour) as
// "20yy-MM-ddThh:mm:ss±hh:mm"; nothing when it isn't one.
std::optional<std::string> iso_time(std::string_view stamp);

// The same for people, to the minute: "2024-03-01 08:00"; empty when it isn't one.
std::string short_time(std::string_view stamp);

// "3 d 04:05:06"
std::string duration(long long seconds);

} // namespace cmifctl

#endif
