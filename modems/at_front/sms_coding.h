// The text of a message as octets: GSM characters of seven bits, or UCS2 (3GPP TS 23.038).
#ifndef MODEMS_AT_FRONT_SMS_CODING_H
#define MODEMS_AT_FRONT_SMS_CODING_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace at_front
{

using Octets = std::vector<std::uint8_t>;

// The numbers of the characters, two for one of the extension; nothing if one is in neither.
std::optional<Octets> septets_of(std::string_view utf8);
std::string text_of_septets(const Octets &septets);

// Eight septets go into seven octets, after `skipped` bits.
Octets pack(const Octets &septets, unsigned skipped);
Octets unpack(const Octets &octets, std::size_t count, unsigned skipped);

// UTF-16, the high octet first.
Octets ucs2_of(std::string_view utf8);
std::string text_of_ucs2(const Octets &octets);

std::string hexadecimal(const Octets &octets);
// Returns nothing for an odd number of digits, or for other characters.
std::optional<Octets> octets_of(std::string_view hexadecimal);

} // namespace at_front

#endif
