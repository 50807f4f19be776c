// The alphabet of short messages (3GPP TS 23.038) and the characters of UTF-8.
#ifndef MODEMS_SIMULATED_GSM_ALPHABET_H
#define MODEMS_SIMULATED_GSM_ALPHABET_H

#include <cstddef>
#include <string_view>

namespace simulated
{

// In the order of their numbers, of which 27 is left out: it leads to the extension.
inline constexpr std::u32string_view gsm_alphabet =
    U"@£$¥èéùìòÇ\nØø\rÅåΔ_ΦΓΛΩΠΨΣΘΞÆæßÉ !\"#¤%&'()*+,-./0123456789:;<=>?¡"
    U"ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÑÜ§¿abcdefghijklmnopqrstuvwxyzäöñüà";
inline constexpr unsigned gsm_escape = 27;

// These take two septets each; their numbers in the extension, in the same order.
inline constexpr std::u32string_view gsm_extension = U"\f^{}\\[~]|€";
inline constexpr unsigned char gsm_extension_numbers[] = {0x0a, 0x14, 0x28, 0x29, 0x2f,
                                                          0x3c, 0x3d, 0x3e, 0x40, 0x65};

struct Character {
    char32_t code = 0;
    std::size_t bytes = 0; // 0 for what is no character
};

// The first one of a text in UTF-8 that is not empty.
Character first_of(std::string_view text);

} // namespace simulated

#endif
