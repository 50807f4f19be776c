#include "checks.h"
#include "client/process.h"

#include <unistd.h>

namespace cmifctl
{
namespace
{

std::string named(const ChannelSnapshot &channel)
{
    const pid_t process = channel.daemon.process;
    return client::daemon_name(channel.channel) +
           (process > 0 ? ", " + client::process_name(process) + "," : "");
}

Problems of_daemons(const Snapshot &snapshot, DaemonState state, const std::string &text)
{
    Problems problems;
    for (const ChannelSnapshot &channel : snapshot.channels)
        if (channel.daemon.state == state)
            problems.emplace_back(named(channel) + " " + text,
                                  std::to_string(channel.daemon.process));
    return problems;
}

} // namespace

Problems checks::ended_daemons(const Snapshot &snapshot)
{
    return of_daemons(snapshot, DaemonState::ended, "has ended");
}

Problems checks::frozen_daemons(const Snapshot &snapshot)
{
    return of_daemons(snapshot, DaemonState::stopped, "is stopped");
}

Problems checks::silent_daemons(const Snapshot &snapshot)
{
    return of_daemons(snapshot, DaemonState::silent, "did not answer within 2 s");
}

Problems checks::unready_daemon(const Snapshot &snapshot)
{
    const bool missing = access(CMIF_QMI_READY_FILE, F_OK) != 0;
    return of_daemons(snapshot, DaemonState::not_ready,
                      std::string("is not ready: " CMIF_QMI_READY_FILE) +
                          (missing ? " is missing" : " does not begin with \"on\""));
}

Problems checks::stale_ready_marker(const Snapshot &snapshot)
{
    const DaemonState state = snapshot.qmi().daemon.state;
    const bool gone = state == DaemonState::ended || state == DaemonState::not_running;
    if (!gone || !is_marked_ready())
        return {};
    return {CMIF_QMI_READY_FILE " was left by a QMI daemon that no longer runs"};
}

void checks::remove_ready_marker(const Snapshot &)
{
    unlink(CMIF_QMI_READY_FILE);
}

} // namespace cmifctl
