// What a list of messages looks like in the configuration store. For the holder of the modem's
// lock.
#ifndef DAEMONS_PUBLISH_MESSAGE_KEYS_H
#define DAEMONS_PUBLISH_MESSAGE_KEYS_H

#include "modems/simulated/messages.h"

namespace sim
{

void publish_messages(const std::vector<Message> &list);

} // namespace sim

#endif
