// The record of the AT channel, read with the request's own fields.
#ifndef DAEMONS_AT_RECORD_H
#define DAEMONS_AT_RECORD_H

#include "at_requests.h"
#include "cmif/cmif.h"

#include <optional>

namespace daemons
{

// The fields that the request uses; nothing when one of them has no NUL.
std::optional<AtArguments> decode(const AtRequest &request, const cmif_msg &record);

// The arguments with their labels, secret ones masked, for a person to read.
std::string describe(const AtRequest &request, const AtArguments &arguments);

} // namespace daemons

#endif
