// Checks of decimal text that arrives from outside.
#ifndef DAEMONS_DIGITS_H
#define DAEMONS_DIGITS_H

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace sim
{

constexpr bool is_digits(std::string_view text, std::size_t least, std::size_t most)
{
    return text.size() >= least && text.size() <= most &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// A whole decimal number and nothing else.
inline std::optional<int> to_number(std::string_view text)
{
    int number = 0;
    const char *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

} // namespace sim

#endif
