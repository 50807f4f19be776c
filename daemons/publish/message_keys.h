// A list of messages in the configuration store.
#ifndef DAEMONS_PUBLISH_MESSAGE_KEYS_H
#define DAEMONS_PUBLISH_MESSAGE_KEYS_H

#include "daemons/modem_status.h"

namespace daemons
{

// Clears what an earlier, longer list left there.
void publish_messages(const std::vector<Message> &list);

} // namespace daemons

#endif
