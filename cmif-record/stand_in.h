// Stand-ins for secrets and identities: other text of the same form.
#ifndef CMIF_RECORD_STAND_IN_H
#define CMIF_RECORD_STAND_IN_H

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace cmif_record
{

using StandInKey = std::array<std::uint64_t, 2>;

// A key that no other recording has.
StandInKey random_key();

// The same length, and each character replaced by another of its class: digits, small and capital
// letters, punctuation, characters of several bytes. Spaces, control characters, percent signs and
// the plus sign of a phone number stay. Equal texts get equal stand-ins under one key; without the
// key a stand-in tells nothing about its text but this form.
std::string stand_in(const StandInKey &key, std::string_view text);

} // namespace cmif_record

#endif
