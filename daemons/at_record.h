// The record of the AT channel, read with the request's own fields.
#ifndef DAEMONS_AT_RECORD_H
#define DAEMONS_AT_RECORD_H

#include "at_forms.h"
#include "cmif/cmif.h"

#include <optional>
#include <string>
#include <vector>

namespace daemons
{

using AtArguments = std::vector<std::string>; // in the order of the request's fields

// The fields that the request uses; nothing when one of them has no NUL.
std::optional<AtArguments> decode(const AtForm &form, const cmif_msg &record);

// The arguments with their labels, secret ones masked, for a person to read.
std::string describe(const AtForm &form, const AtArguments &arguments);

} // namespace daemons

#endif
