// What ModemManager reports of a modem, as the daemons publish it. Unknown stays empty.
#ifndef MODEMS_MODEMMANAGER_STATUS_H
#define MODEMS_MODEMMANAGER_STATUS_H

#include "daemons/modem_status.h"
#include "kept.h"
#include "view.h"

namespace modem_manager
{

// Without a modem: what the daemon itself keeps.
daemons::ModemStatus status_of(const Kept &kept);

daemons::ModemStatus status_of(const View &view, const Kept &kept);

inline bool is_served(const daemons::ModemStatus &status)
{
    using enum daemons::Registration;
    return status.registration == home || status.registration == roaming;
}

// Its parts.
void add_sim(const View &view, daemons::ModemStatus &status);
void add_network(const View &view, const Kept &kept, daemons::ModemStatus &status);
void add_signal(const View &view, daemons::ModemStatus &status);
void add_connection(const View &view, const Kept &kept, daemons::ModemStatus &status);

// Of the connection that the status has; it goes on while nothing else changes.
void add_uptime(const Kept &kept, daemons::ModemStatus &status);

// Of the serving cell in the answer to GetCellInfo.
CellInfo cell_info_of(const Value &cells);

} // namespace modem_manager

#endif
