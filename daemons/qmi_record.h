// A connection profile as it travels over the QMI channel: its numbers are digits.
#ifndef DAEMONS_QMI_RECORD_H
#define DAEMONS_QMI_RECORD_H

#include "modems/simulated/connection.h"

#include <optional>
#include <string>
#include <string_view>

namespace sim
{

// Nothing when the size is another, a text has no end, or a number is not a digit in its range.
std::optional<ConnectionProfile> decode_profile(std::string_view payload);

// For people to read, without the password.
std::string describe_profile(std::string_view payload);

} // namespace sim

#endif
