// The data connection on its way up or down, watched until it is there or clearly won't be.
#ifndef CMIFCTL_VERBS_CONNECTION_H
#define CMIFCTL_VERBS_CONNECTION_H

#include "cmifctl/context.h"

namespace cmifctl
{

// The published state: 0 to 3 as shared_CMIF_get_connection_status gives it, or this.
constexpr int profile_change = 7;
int connection_state(const Invocation &run);

enum class Goal { connected, disconnected };

// Asks the QMI daemon and returns when the published state is the goal; fails with the reason when
// the daemon says no, falls back, or time is up.
void bring_to(const Invocation &run, Goal goal);

} // namespace cmifctl

#endif
