// What only the QMI daemon knows: shown when it is ready, left out with a reason when it isn't.
#ifndef CMIFCTL_VERBS_QMI_READINGS_H
#define CMIFCTL_VERBS_QMI_READINGS_H

#include "cmifctl/context.h"

#include <initializer_list>
#include <string_view>

namespace cmifctl
{

// Adds the named views ("device_revision", "state" of the SIM, "packet_service") to their sections
// and whether the daemon answered to the section "daemons". Never fails for the daemon's sake.
void report_qmi_views(Invocation &run, std::initializer_list<std::string_view> keys);

// The SIM's state as the QMI daemon gives it (names::sim_state).
Call sim_state_call();

} // namespace cmifctl

#endif
