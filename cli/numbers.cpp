#include "numbers.h"

#include <algorithm>
#include <charconv>

namespace cli
{
namespace
{

template <class Number>
std::optional<Number> parsed(std::string_view text)
{
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    Number number{};
    const char *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    return number;
}

} // namespace

std::optional<long long> whole_number(std::string_view text)
{
    return parsed<long long>(text);
}

std::optional<double> decimal_number(std::string_view text)
{
    const std::optional<double> number = parsed<double>(text);
    const bool plain = std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+';
    });
    return plain ? number : std::nullopt;
}

} // namespace cli
