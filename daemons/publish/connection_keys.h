// What the data connection looks like in the configuration store. For the holder of the modem's
// lock.
#ifndef DAEMONS_PUBLISH_CONNECTION_KEYS_H
#define DAEMONS_PUBLISH_CONNECTION_KEYS_H

#include "modems/simulated/connection.h"

namespace sim
{

class ModemState;

// The profile that the store holds when the modem starts: the one that was saved. What is out of
// its range there counts as unset.
ConnectionProfile stored_profile();

// The library's waits around a profile change, unless somebody has chosen them.
void prepare_wait_times();

bool auto_connect_is_on();

// The connection with its profile, and the PDP context in use.
void publish_connection(const ModemState &state);

} // namespace sim

#endif
