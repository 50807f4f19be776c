// What can be told of the daemons and their store without asking them.
#ifndef CMIFCTL_VERBS_DAEMON_READINGS_H
#define CMIFCTL_VERBS_DAEMON_READINGS_H

#include "cmifctl/context.h"

namespace cmifctl
{

// Whether the AT daemon serves its queue: the last process that took from it, when that was, and
// how many requests wait.
void report_at_daemon(Context &context);

// The store's directory, the one that the daemons use, and the time since the last change of the
// values that are read from it.
void report_store(Context &context);

} // namespace cmifctl

#endif
