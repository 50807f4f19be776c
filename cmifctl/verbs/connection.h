// Brings the data connection up or down, and monitors it until it reaches the target state or
// fails.
#ifndef CMIFCTL_VERBS_CONNECTION_H
#define CMIFCTL_VERBS_CONNECTION_H

#include "cmifctl/calls.h"

namespace cmifctl
{

// The published state: 0 to 3 as shared_CMIF_get_connection_status gives it, or this.
constexpr int profile_change = 7;
int connection_state(const Context &context);

enum class Target { connected, disconnected };

// Returns when the daemon has accepted the request.
void request(const Context &context, Target target);

// Sends the request and returns when the published state is the target. Fails with the reason when
// the daemon refuses, when the state falls back, or when time is up.
void drive_to(const Context &context, Target target);

} // namespace cmifctl

#endif
