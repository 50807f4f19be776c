// Why the data connection doesn't come up, as far as the SIM, the registration and the daemon tell.
#ifndef CMIFCTL_VERBS_CONNECTION_REASON_H
#define CMIFCTL_VERBS_CONNECTION_REASON_H

#include "cmifctl/calls.h"

#include <string>

namespace cmifctl
{

struct Reason {
    std::string text;
    std::string hint;
};

Reason connection_reason(const Context &context);

// The error that the daemon publishes; empty without one.
std::string last_error(const Context &context);

} // namespace cmifctl

#endif
