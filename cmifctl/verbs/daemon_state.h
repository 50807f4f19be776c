// What is known of a daemon: by its queue, by the process that last took a request, and by what
// became of a request that was sent to it.
#ifndef CMIFCTL_VERBS_DAEMON_STATE_H
#define CMIFCTL_VERBS_DAEMON_STATE_H

#include "client/channel.h"
#include "cmifctl/context.h"

#include <string>
#include <sys/types.h>

namespace cmifctl
{

// `running`: its process exists; it was not asked. `not_running`: it has no queue.
enum class DaemonState {
    responding,
    running,
    not_running,
    not_ready,
    stopped,
    ended,
    silent,
    unknown
};

struct Daemon {
    DaemonState state = DaemonState::unknown;
    pid_t process = 0;    // the one that last took a request; 0 when it isn't known
    std::string reason{}; // why it isn't known, or doesn't answer
};

// What became of a request; `no` when none was sent.
enum class Asked { no, answered, not_ready, silent };

Daemon inspect_daemon(client::Channel channel, Asked asked = Asked::no);

// In the section "daemons": its state, how long ago it took a request, how many wait for it.
void report_daemon(Report &report, client::Channel channel, const Daemon &daemon);

} // namespace cmifctl

#endif
