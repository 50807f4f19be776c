// The data connection in the configuration store.
#ifndef DAEMONS_PUBLISH_CONNECTION_KEYS_H
#define DAEMONS_PUBLISH_CONNECTION_KEYS_H

#include "daemons/modem_status.h"

namespace daemons
{

// The profile that the store holds when a daemon starts: the one that was saved. A value that is
// out of its range there counts as unset.
DataProfile stored_profile();

// The library's waits around a profile change, unless they have been set.
void prepare_wait_times();

bool auto_connect_is_on();

// The connection with its profile, and the PDP context in use.
void publish_connection(const ModemStatus &status);

} // namespace daemons

#endif
