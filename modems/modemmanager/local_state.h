// What no modem reports: settings and results that the daemon keeps itself.
#ifndef MODEMS_MODEMMANAGER_LOCAL_STATE_H
#define MODEMS_MODEMMANAGER_LOCAL_STATE_H

#include "daemons/modem_status.h"

#include <chrono>
#include <set>

namespace modem_manager
{

// Of the serving cell, what only a query tells.
struct CellInfo {
    std::string channel, band, duplex;
};

struct LocalState {
    int functionality = 1; // as last asked for
    daemons::Roaming roaming = daemons::Roaming::automatic;
    std::optional<bool> manual_selection; // unknown until one is made
    std::optional<bool> packet_domain;    // as last set
    daemons::CmeError search = daemons::CmeError::ok;

    std::vector<daemons::Message> messages; // as last listed
    std::set<std::string> seen;             // of those that an earlier listing showed

    std::optional<daemons::PdpProfile> profile; // the modem's own, as last synchronized
    daemons::Cell last_cell;
    CellInfo cell_info;

    daemons::DataProfile data_profile;
    bool in_transition = false; // the connection comes or goes
    daemons::CmeError last_error = daemons::CmeError::ok;
    std::string last_apn;
    std::optional<std::chrono::steady_clock::time_point> connected_since;
};

} // namespace modem_manager

#endif
