#include "terminal_text.h"

#include "utf8.h"

#include <array>
#include <cstdio>
#include <cwchar>

namespace cmifctl
{
namespace
{

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

std::string escaped(Character character, std::string_view bytes, Lines lines)
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

// How many bytes of `text` fit into `columns`.
std::size_t fitting_bytes(std::string_view text, std::size_t columns)
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

} // namespace

bool harmful(char32_t code)
{
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || code == 0xad ||
           (code >= 0x200b && code <= 0x200f) || (code >= 0x2028 && code <= 0x202e) ||
           (code >= 0x2060 && code <= 0x206f) || code == 0xfeff || code >= 0xe0000;
}

std::string escape_line(std::string_view text)
{
    std::string out;
    while (!text.empty()) {
        const Character character = first_character(text);
        const bool space = character.valid && (character.code == '\r' || character.code == '\t');
        if (character.valid && character.code == '\n')
            out += "\\n";
        else if (character.valid && character.code == '\\')
            out += "\\\\";
        else
            out += space ? byte_escape(character.code) : escaped(character, text, Lines::kept);
        text.remove_prefix(character.length);
    }
    return out;
}

std::string escape_controls(std::string_view text, Lines lines)
{
    std::string out;
    while (!text.empty()) {
        const Character character = first_character(text);
        out += escaped(character, text, lines);
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

std::string truncated(std::string_view text, std::size_t columns)
{
    if (width(text) <= columns)
        return std::string(text);
    constexpr std::string_view mark = "...";
    const std::size_t room = columns > mark.size() ? columns - mark.size() : 0;
    return std::string(text.substr(0, fitting_bytes(text, room))).append(mark.substr(0, columns));
}

std::string padded(std::string_view text, std::size_t columns)
{
    const std::size_t used = width(text);
    return std::string(text).append(used < columns ? columns - used : 0, ' ');
}

} // namespace cmifctl
