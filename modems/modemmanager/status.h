// What ModemManager reports of a modem, as the daemons publish it. Unknown stays empty.
#ifndef MODEMS_MODEMMANAGER_STATUS_H
#define MODEMS_MODEMMANAGER_STATUS_H

#include "daemons/modem_status.h"
#include "local_state.h"
#include "modem_view.h"

namespace modem_manager
{

// Without a modem: what the daemon itself keeps.
daemons::ModemStatus status_of(const LocalState &local);

daemons::ModemStatus status_of(const ModemView &view, const LocalState &local);

inline bool is_served(const daemons::ModemStatus &status)
{
    using enum daemons::Registration;
    return status.registration == home || status.registration == roaming;
}

// Its parts.
void add_sim(const ModemView &view, daemons::ModemStatus &status);
void add_network(const ModemView &view, const LocalState &local, daemons::ModemStatus &status);
void add_signal(const ModemView &view, daemons::ModemStatus &status);
void add_connection(const ModemView &view, const LocalState &local, daemons::ModemStatus &status);

// Adds how long the status's connection is up, which grows while nothing else changes.
void add_uptime(const LocalState &local, daemons::ModemStatus &status);

// Returns the serving cell's values from the answer to GetCellInfo.
CellInfo cell_info_of(const Value &cells);

} // namespace modem_manager

#endif
