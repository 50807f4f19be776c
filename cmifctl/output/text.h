// Text from modems and strangers, made fit for a terminal.
#ifndef CMIFCTL_OUTPUT_TEXT_H
#define CMIFCTL_OUTPUT_TEXT_H

#include <optional>
#include <string>
#include <string_view>

namespace cmifctl
{

enum class Lines { joined, kept };

// Without anything that a terminal would act on: control and direction characters and bytes that
// are no UTF-8 become visible escapes; line ends become blanks, or stay.
std::string safe(std::string_view text, Lines lines = Lines::joined);

// Columns on a terminal.
std::size_t width(std::string_view text);

// At most `columns` wide, ending in "..." when something was cut off.
std::string cut(std::string_view text, std::size_t columns);

std::string padded(std::string_view text, std::size_t columns);

// A service centre time stamp "yy/MM/dd,hh:mm:ss±zz" (zz in quarters of an hour) as
// "20yy-MM-ddThh:mm:ss±hh:mm"; nothing when it isn't one.
std::optional<std::string> iso_time(std::string_view stamp);

// "3 d 04:05:06"
std::string duration(long long seconds);

// The number that `text` is, all of it; nothing otherwise.
std::optional<long long> whole_number(std::string_view text);
std::optional<double> decimal_number(std::string_view text);

bool digits(std::string_view text, std::size_t least, std::size_t most);

} // namespace cmifctl

#endif
