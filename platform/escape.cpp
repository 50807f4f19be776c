#include "escape.h"

namespace host_store
{
namespace
{

constexpr std::string_view hex_digits = "0123456789abcdef";

struct Escape {
    char letter;
    char byte;
};
constexpr Escape escapes[] = {{'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'\\', '\\'}};

std::string spelling(char c)
{
    for (const Escape &escape : escapes) {
        if (escape.byte == c)
            return {'\\', escape.letter};
    }
    const auto byte = static_cast<unsigned char>(c);
    return {'\\', 'x', hex_digits[byte >> 4U], hex_digits[byte & 15U]};
}

bool is_control(char c)
{
    return static_cast<unsigned char>(c) < ' ' || c == '\x7f';
}

std::optional<unsigned> hex_value(char c)
{
    const char lower = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    const std::size_t value = hex_digits.find(lower);
    if (value == std::string_view::npos)
        return std::nullopt;
    return static_cast<unsigned>(value);
}

// Removes what follows \x from the front of `rest`.
std::optional<char> take_hex(std::string_view &rest)
{
    if (rest.size() < 2)
        return std::nullopt;
    const auto high = hex_value(rest[0]), low = hex_value(rest[1]);
    if (!high || !low)
        return std::nullopt;
    rest.remove_prefix(2);
    return static_cast<char>(*high * 16 + *low);
}

// Removes what follows a backslash from the front of `rest`.
std::optional<char> take_escape(std::string_view &rest)
{
    if (rest.empty())
        return std::nullopt;
    const char letter = rest.front();
    rest.remove_prefix(1);
    for (const Escape &escape : escapes) {
        if (escape.letter == letter)
            return escape.byte;
    }
    return letter == 'x' ? take_hex(rest) : std::nullopt;
}

} // namespace

std::string escaped(std::string_view text, Side side)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool at_edge = i == 0 || i + 1 == text.size();
        const bool special_in_key = side == Side::key && (c == '=' || (c == '#' && i == 0));
        if (is_control(c) || c == '\\' || (c == ' ' && at_edge) || special_in_key)
            out += spelling(c);
        else
            out += c;
    }
    return out;
}

std::optional<std::string> unescaped(std::string_view text)
{
    std::string out;
    while (!text.empty()) {
        std::optional<char> c = text.front();
        text.remove_prefix(1);
        if (c == '\\')
            c = take_escape(text);
        if (!c || *c == '\0')
            return std::nullopt;
        out += *c;
    }
    return out;
}

} // namespace host_store
