// Why the data connection doesn't come up, as far as the SIM, the registration and the daemon tell.
#ifndef CMIFCTL_VERBS_CONNECTION_REASON_H
#define CMIFCTL_VERBS_CONNECTION_REASON_H

#include "cmifctl/calls.h"

#include <string>

namespace cmifctl
{

// No request and no key of the store tells whether the radio is on.
constexpr const char *not_registered_hint =
    "Either the radio is off, which no reading shows: 'cmifctl radio functionality full' switches "
    "it on. Or no network is in reach, or none admits the SIM: 'cmifctl network scan' lists those "
    "in reach.";
constexpr const char *searching_hint =
    "The radio is on. If the search goes on, there is no coverage, or no network admits the SIM: "
    "'cmifctl network scan' lists those in reach.";
constexpr const char *denied_hint =
    "Choose another operator with 'cmifctl network auto' or 'cmifctl network select'; ask the "
    "operator whether the SIM is active.";

struct Reason {
    std::string text;
    std::string hint;
};

Reason connection_reason(const Context &context);

// The error that the daemon publishes; empty without one.
std::string last_error(const Context &context);

} // namespace cmifctl

#endif
