// Numbers in text from users and modems.
#ifndef CLI_NUMBERS_H
#define CLI_NUMBERS_H

#include <optional>
#include <string_view>

namespace cli
{

// The number if all of `text` is one.
std::optional<long long> whole_number(std::string_view text);
std::optional<double> decimal_number(std::string_view text);

} // namespace cli

#endif
