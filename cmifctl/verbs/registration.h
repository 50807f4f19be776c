// Waits until the modem is registered with the operator that was selected.
#ifndef CMIFCTL_VERBS_REGISTRATION_H
#define CMIFCTL_VERBS_REGISTRATION_H

#include "cmifctl/calls.h"

#include <chrono>

namespace cmifctl
{

struct Selected {
    std::string operator_code;
    Json technology; // a code of enums::selectable_technology; null for any
};

// Returns when the published registration is the selected one. Fails with exit 4 when it is denied,
// and with 3 when time, which counts from `started`, is up.
void wait_for_registration(const Context &context, const Selected &selected,
                           std::chrono::steady_clock::time_point started);

} // namespace cmifctl

#endif
