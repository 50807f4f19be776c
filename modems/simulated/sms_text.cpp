#include "sms_text.h"

#include "gsm_alphabet.h"

namespace simulated
{
namespace
{

std::size_t gsm_units(char32_t code)
{
    constexpr std::size_t none = std::u32string_view::npos;
    if (gsm_alphabet.find(code) != none)
        return 1;
    return gsm_extension.find(code) != none ? 2 : 0;
}

std::size_t utf16_units(char32_t code)
{
    return code < 0x10000 ? 1 : 2;
}

bool is_gsm(std::string_view text)
{
    while (!text.empty()) {
        const Character character = first_of(text);
        if (gsm_units(character.code) == 0)
            return false;
        text.remove_prefix(character.bytes);
    }
    return true;
}

// No character is divided.
std::vector<std::string> divide(std::string_view text, std::size_t (*units)(char32_t),
                                std::size_t room)
{
    std::vector<std::string> parts(1);
    std::size_t used = 0;
    while (!text.empty()) {
        const Character character = first_of(text);
        used += units(character.code);
        if (used > room) {
            parts.emplace_back();
            used = units(character.code);
        }
        parts.back() += text.substr(0, character.bytes);
        text.remove_prefix(character.bytes);
    }
    return parts;
}

} // namespace

// The range excludes longer forms of shorter characters, halves of surrogate pairs, and numbers
// that are beyond Unicode.
Character first_of(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x80)
        return {byte(0), 1};
    const std::size_t size = byte(0) >= 0xf0 ? 4 : byte(0) >= 0xe0 ? 3 : 2;
    if (byte(0) < 0xc0 || byte(0) >= 0xf8 || text.size() < size)
        return {};
    char32_t code = byte(0) & (0x7fU >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xc0) != 0x80)
            return {};
        code = code << 6 | (byte(i) & 0x3fU);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xd800 && code < 0xe000;
    return code < smallest[size] || surrogate || code > 0x10ffff ? Character{}
                                                                 : Character{code, size};
}

std::optional<std::size_t> find_no_utf8(std::string_view text)
{
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t bytes = first_of(text.substr(position)).bytes;
        if (bytes == 0)
            return position;
        position += bytes;
    }
    return std::nullopt;
}

std::vector<std::string> sms_parts(std::string_view text)
{
    const bool gsm = is_gsm(text);
    const auto units = gsm ? gsm_units : utf16_units;
    std::vector<std::string> parts = divide(text, units, gsm ? 160 : 70);
    return parts.size() == 1 ? parts : divide(text, units, gsm ? 153 : 67);
}

} // namespace simulated
