// One value as a person reads it.
#ifndef CMIFCTL_OUTPUT_TEXT_VALUE_H
#define CMIFCTL_OUTPUT_TEXT_VALUE_H

#include "client/failure.h"

#include <string>

namespace cmifctl
{

// Control characters are escaped, line ends kept; null is empty, an enumeration its name.
std::string value_text(const client::Json &value);

std::string bold(const std::string &text, bool colour);

} // namespace cmifctl

#endif
