// What a port reports unasked when the modem has changed.
#ifndef MODEMS_AT_FRONT_REPORTS_H
#define MODEMS_AT_FRONT_REPORTS_H

#include "device.h"
#include "indicators.h"
#include "session.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace at_front
{

struct Situation {
    bool down = false;
    daemons::ModemStatus status;
    Indicators indicators{};
    std::optional<int> context; // that is connected
    std::set<int> messages;     // their indexes
};

Situation situation_of(const Device &device);

// The lines, of those kinds that the session has asked for.
std::vector<std::string> reports_between(const Situation &before, const Situation &now,
                                         const Session &session);

} // namespace at_front

#endif
