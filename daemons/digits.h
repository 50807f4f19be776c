// Decimal text: numbers, and the forms of the codes that a SIM card and a network use.
#ifndef DAEMONS_DIGITS_H
#define DAEMONS_DIGITS_H

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

namespace daemons
{

constexpr bool is_digits(std::string_view text, std::size_t min, std::size_t max)
{
    return text.size() >= min && text.size() <= max &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// 3GPP TS 31.101: PIN and PUK. TS 23.003: a network's MCC and MNC together.
constexpr bool is_pin(std::string_view text)
{
    return is_digits(text, 4, 8);
}
constexpr bool is_puk(std::string_view text)
{
    return is_digits(text, 8, 8);
}
constexpr bool is_plmn_code(std::string_view text)
{
    return is_digits(text, 5, 6);
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

} // namespace daemons

#endif
