// The moments in the modem's life that a scenario can wait for.
#ifndef MODEMS_SIMULATED_SITUATION_H
#define MODEMS_SIMULATED_SITUATION_H

#include "modem_state.h"

#include <string_view>

namespace simulated
{

struct Situation {
    bool sim_ready = false, registered = false, searching = false, down = false;
    daemons::ConnectionState connection = daemons::ConnectionState::disconnected;
    unsigned messages = 0; // delivered so far
};

Situation situation_of(const ModemState &state);

// The names of the events that lead from one to the other.
std::vector<std::string_view> events_between(const Situation &before, const Situation &after);

} // namespace simulated

#endif
