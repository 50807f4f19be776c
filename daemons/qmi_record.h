// A connection profile as it travels over the QMI channel: its numbers are digits.
#ifndef DAEMONS_QMI_RECORD_H
#define DAEMONS_QMI_RECORD_H

#include "modem_status.h"

#include <optional>
#include <string>
#include <string_view>

namespace daemons
{

// Nothing when the size differs, a text has no NUL, or a number is not a digit in its range.
std::optional<DataProfile> decode_profile(std::string_view payload);

// For a person to read, without the password.
std::string describe_profile(std::string_view payload);

} // namespace daemons

#endif
