// What the modem's state looks like in the configuration store. For the holder of the modem's lock.
#ifndef DAEMONS_PUBLISH_STATUS_KEYS_H
#define DAEMONS_PUBLISH_STATUS_KEYS_H

namespace sim
{

class ModemState;

// Every key that the status getters and the queries read, but for messages and the data connection.
void publish_status(const ModemState &state);

} // namespace sim

#endif
