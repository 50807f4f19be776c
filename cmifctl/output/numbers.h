// Numbers in text from users and modems.
#ifndef CMIFCTL_OUTPUT_NUMBERS_H
#define CMIFCTL_OUTPUT_NUMBERS_H

#include <optional>
#include <string_view>

namespace cmifctl
{

// The number if all of `text` is one.
std::optional<long long> whole_number(std::string_view text);
std::optional<double> decimal_number(std::string_view text);

} // namespace cmifctl

#endif
