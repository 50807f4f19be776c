// Readings that only the QMI daemon has: left out, with the reason, when it does not answer.
#ifndef CMIFCTL_VERBS_QMI_READINGS_H
#define CMIFCTL_VERBS_QMI_READINGS_H

#include "cmifctl/calls.h"

#include <initializer_list>
#include <string_view>

namespace cmifctl
{

// Reports the named readings ("device_revision", "state" of the SIM, "packet_service") in their
// sections, and in the section "daemons" whether the daemon answered. Does not fail without it.
void report_qmi_readings(Context &context, std::initializer_list<std::string_view> keys);

// The code of the SIM's state as the QMI daemon gives it (enums::sim_state).
Call sim_state_call();

} // namespace cmifctl

#endif
