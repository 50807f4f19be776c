#include "utf8.h"

#include <array>

namespace cmifctl
{
namespace
{

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

} // namespace

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
    constexpr std::array<char32_t, 5> min_code{0, 0, 0x80, 0x800, 0x10000};
    const bool valid =
        code >= min_code.at(length) && code < 0x110000 && (code < 0xd800 || code > 0xdfff);
    return {code, valid ? length : 1, valid};
}

} // namespace cmifctl
