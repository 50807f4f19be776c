// The short messages as the AT daemon reads them from the modem.
#ifndef CMIFCTL_VERBS_MESSAGES_H
#define CMIFCTL_VERBS_MESSAGES_H

#include "cmifctl/calls.h"

namespace cmifctl
{

// {"unread", "messages"}; each message has "id", "unread", "from", "time", "scts", "text".
Json read_messages(const Context &context);

} // namespace cmifctl

#endif
