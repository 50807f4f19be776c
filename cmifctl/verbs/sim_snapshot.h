// The SIM's status and retry counters, as the AT daemon reads them from the SIM.
#ifndef CMIFCTL_VERBS_SIM_SNAPSHOT_H
#define CMIFCTL_VERBS_SIM_SNAPSHOT_H

#include "cmifctl/calls.h"

#include <string>

namespace cmifctl
{

struct SimSnapshot {
    Json counters = Json::object(); // "pin1", "puk1", "pin2", "puk2"; null for one that is unknown
    std::string status{};           // "SIM PIN"; empty when it is unknown

    Json left(const char *counter) const { return counters.value(counter, Json()); }
};

// Fails without the daemons' store.
SimSnapshot inspect_sim(const Context &context);

constexpr const char *unknown_counters_hint =
    "The AT daemon has published none; 'cmifctl doctor' may show why.";

} // namespace cmifctl

#endif
