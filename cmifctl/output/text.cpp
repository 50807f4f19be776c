#include "text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cwchar>

namespace cmifctl
{

namespace
{

struct Character {
    char32_t code;
    std::size_t length; // bytes; the code is meaningless when `valid` is false
    bool valid;
};

std::size_t sequence_length(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xc2 && lead < 0xe0)
        return 2;
    if (lead >= 0xe0 && lead < 0xf0)
        return 3;
    return lead >= 0xf0 && lead < 0xf5 ? 4 : 0;
}

Character first_character(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = sequence_length(lead);
    if (length == 0 || length > text.size())
        return {0, 1, false};
    if (length == 1)
        return {lead, 1, true};
    char32_t code = lead & (0x7fU >> length);
    for (const char next : text.substr(1, length - 1)) {
        const auto byte = static_cast<unsigned char>(next);
        if ((byte & 0xc0U) != 0x80)
            return {0, 1, false};
        code = code << 6U | (byte & 0x3fU);
    }
    constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const bool valid =
        code >= least.at(length) && code < 0x110000 && (code < 0xd800 || code > 0xdfff);
    return {code, valid ? length : 1, valid};
}

// Invisible, or able to reorder or overwrite what stands around it.
bool harmful(char32_t code)
{
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || code == 0xad ||
           (code >= 0x200b && code <= 0x200f) || (code >= 0x2028 && code <= 0x202e) ||
           (code >= 0x2060 && code <= 0x206f) || code == 0xfeff || code >= 0xe0000;
}

std::string byte_escape(unsigned byte)
{
    std::array<char, 8> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "\\x%02x", byte & 0xffU);
    return buffer.data();
}

std::string code_escape(unsigned code)
{
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "\\u{%x}", code);
    return buffer.data();
}

std::string safe_character(Character character, std::string_view bytes, Lines lines)
{
    if (!character.valid)
        return byte_escape(static_cast<unsigned char>(bytes.front()));
    const char32_t code = character.code;
    if (code == '\n')
        return lines == Lines::kept ? "\n" : " ";
    if (code == '\r' || code == '\t')
        return " ";
    if (!harmful(code))
        return std::string(bytes.substr(0, character.length));
    return code < 0x80 ? byte_escape(code) : code_escape(code);
}

std::size_t columns_of(Character character)
{
    const int columns = character.valid ? wcwidth(static_cast<wchar_t>(character.code)) : 1;
    return columns < 0 ? 1 : static_cast<std::size_t>(columns);
}

// The bytes of `text` that fill at most `columns`.
std::size_t fitting(std::string_view text, std::size_t columns)
{
    std::size_t used = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        const Character character = first_character(text.substr(at));
        used += columns_of(character);
        if (used > columns)
            break;
        at += character.length;
    }
    return at;
}

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

std::string safe(std::string_view text, Lines lines)
{
    std::string out;
    while (!text.empty()) {
        const Character character = first_character(text);
        out += safe_character(character, text, lines);
        text.remove_prefix(character.length);
    }
    return out;
}

std::size_t width(std::string_view text)
{
    std::size_t columns = 0;
    while (!text.empty()) {
        const Character character = first_character(text);
        columns += columns_of(character);
        text.remove_prefix(character.length);
    }
    return columns;
}

std::string cut(std::string_view text, std::size_t columns)
{
    if (width(text) <= columns)
        return std::string(text);
    constexpr std::string_view mark = "...";
    const std::size_t room = columns > mark.size() ? columns - mark.size() : 0;
    return std::string(text.substr(0, fitting(text, room))).append(mark.substr(0, columns));
}

std::string padded(std::string_view text, std::size_t columns)
{
    const std::size_t used = width(text);
    return std::string(text).append(used < columns ? columns - used : 0, ' ');
}

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

std::string duration(long long seconds)
{
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%02lld:%02lld:%02lld", seconds / 3600 % 24,
                  seconds / 60 % 60, seconds % 60);
    const long long days = seconds / 86400;
    return (days > 0 ? std::to_string(days) + " d " : "") + buffer.data();
}

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

bool digits(std::string_view text, std::size_t least, std::size_t most)
{
    return text.size() >= least && text.size() <= most &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace cmifctl
