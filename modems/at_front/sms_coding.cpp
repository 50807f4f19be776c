#include "sms_coding.h"

#include "modems/simulated/gsm_alphabet.h"

namespace at_front
{
namespace
{

using simulated::gsm_alphabet;
using simulated::gsm_escape;
using simulated::gsm_extension;
using simulated::gsm_extension_numbers;

constexpr char32_t surrogates = 0xd800, low_surrogates = 0xdc00, beyond_surrogates = 0xe000,
                   first_of_pairs = 0x10000, no_character = 0xfffd;

void add_utf8(std::string &text, char32_t code)
{
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    const int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr unsigned lead[] = {0, 0xc0, 0xe0, 0xf0};
    text += static_cast<char>(lead[more] | code >> (6 * more));
    for (int i = more - 1; i >= 0; --i)
        text += static_cast<char>(0x80U | (code >> (6 * i) & 0x3fU));
}

std::u32string characters_of(std::string_view utf8)
{
    std::u32string characters;
    while (!utf8.empty()) {
        const simulated::Character first = simulated::first_of(utf8);
        characters += first.bytes == 0 ? no_character : first.code;
        utf8.remove_prefix(first.bytes == 0 ? 1 : first.bytes);
    }
    return characters;
}

} // namespace

std::optional<Octets> septets_of(std::string_view utf8)
{
    constexpr std::size_t none = std::u32string_view::npos;
    Octets septets;
    for (const char32_t code : characters_of(utf8)) {
        const std::size_t index = gsm_alphabet.find(code), extra = gsm_extension.find(code);
        if (index == none && extra == none)
            return std::nullopt;
        if (index == none) {
            septets.push_back(gsm_escape);
            septets.push_back(gsm_extension_numbers[extra]);
        } else {
            septets.push_back(static_cast<std::uint8_t>(index < gsm_escape ? index : index + 1));
        }
    }
    return septets;
}

// What follows an escape and is not in the extension is read as if there were no escape.
std::string text_of_septets(const Octets &septets)
{
    std::string text;
    bool escaped = false;
    for (const std::uint8_t septet : septets) {
        if (septet == gsm_escape && !escaped) {
            escaped = true;
            continue;
        }
        char32_t code = gsm_alphabet[septet < gsm_escape ? septet : septet - 1U];
        for (std::size_t i = 0; escaped && i < gsm_extension.size(); ++i)
            if (gsm_extension_numbers[i] == septet)
                code = gsm_extension[i];
        escaped = false;
        add_utf8(text, code);
    }
    return text;
}

Octets pack(const Octets &septets, unsigned skipped)
{
    Octets octets((skipped + septets.size() * 7 + 7) / 8);
    std::size_t bit = skipped;
    for (const std::uint8_t septet : septets)
        for (unsigned i = 0; i < 7; ++i, ++bit)
            octets[bit / 8] |= static_cast<std::uint8_t>((septet >> i & 1U) << bit % 8);
    return octets;
}

Octets unpack(const Octets &octets, std::size_t count, unsigned skipped)
{
    Octets septets(count);
    std::size_t bit = skipped;
    for (std::uint8_t &septet : septets)
        for (unsigned i = 0; i < 7; ++i, ++bit)
            if (bit / 8 < octets.size())
                septet |= static_cast<std::uint8_t>((octets[bit / 8] >> bit % 8 & 1U) << i);
    return septets;
}

Octets ucs2_of(std::string_view utf8)
{
    Octets octets;
    const auto add = [&octets](char32_t unit) {
        octets.push_back(static_cast<std::uint8_t>(unit >> 8));
        octets.push_back(static_cast<std::uint8_t>(unit & 0xffU));
    };
    for (const char32_t code : characters_of(utf8)) {
        if (code < first_of_pairs) {
            add(code);
            continue;
        }
        add(surrogates + ((code - first_of_pairs) >> 10));
        add(low_surrogates + ((code - first_of_pairs) & 0x3ffU));
    }
    return octets;
}

std::string text_of_ucs2(const Octets &octets)
{
    std::string text;
    char32_t high = 0;
    for (std::size_t i = 0; i + 1 < octets.size(); i += 2) {
        const auto unit = static_cast<char32_t>(octets[i] << 8 | octets[i + 1]);
        if (unit >= surrogates && unit < low_surrogates) {
            high = unit;
            continue;
        }
        const bool low = unit >= low_surrogates && unit < beyond_surrogates;
        if (low && high != 0)
            add_utf8(text, first_of_pairs + ((high - surrogates) << 10) + (unit - low_surrogates));
        else
            add_utf8(text, low ? no_character : unit);
        high = 0;
    }
    return text;
}

std::string hexadecimal(const Octets &octets)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t octet : octets) {
        text += digits[octet >> 4];
        text += digits[octet & 0xfU];
    }
    return text;
}

std::optional<Octets> octets_of(std::string_view hexadecimal)
{
    constexpr std::string_view digits = "0123456789ABCDEFabcdef";
    const auto value = [&](char digit) {
        const std::size_t index = digits.find(digit);
        return index < 16 ? index : index - 6;
    };
    if (hexadecimal.size() % 2 != 0 ||
        hexadecimal.find_first_not_of(digits) != std::string_view::npos)
        return std::nullopt;
    Octets octets;
    for (std::size_t i = 0; i < hexadecimal.size(); i += 2)
        octets.push_back(
            static_cast<std::uint8_t>(value(hexadecimal[i]) << 4 | value(hexadecimal[i + 1])));
    return octets;
}

} // namespace at_front
