#include "daemon_state.h"

#include "client/process.h"
#include "client/unanswered.h"
#include "cmifctl/calls.h"
#include "cmifctl/output/times.h"
#include "platform/host_store.h"
#include "store.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <optional>
#include <sys/msg.h>

namespace cmifctl
{
namespace
{

// errno tells why there is none.
std::optional<msqid_ds> queue_state(client::Channel channel)
{
    msqid_ds state{};
    const int queue = msgget(client::request_key(channel), 0);
    return queue != -1 && msgctl(queue, IPC_STAT, &state) == 0 ? std::optional(state)
                                                               : std::nullopt;
}

// The process that last took a request to serve it; 0 when it isn't known.
pid_t last_reader(client::Channel channel)
try {
    return client::Unanswered().daemon_of(channel);
} catch (const Failure &) {
    return 0;
}

DaemonState state_of(pid_t process, Asked asked)
{
    if (asked == Asked::answered)
        return DaemonState::responding;
    if (client::process_is_stopped(process))
        return DaemonState::stopped;
    const bool exists = client::process_exists(process);
    // Another daemon that runs may have taken nothing so far. A platform's is not announced.
    const bool replaced =
        asked == Asked::no && (is_platforms_store() || *host_store_announced() != '\0');
    if (process > 0 && !exists && !replaced)
        return DaemonState::ended;
    if (asked == Asked::not_ready)
        return DaemonState::not_ready;
    if (asked == Asked::silent)
        return DaemonState::silent;
    return exists ? DaemonState::running : DaemonState::unknown;
}

Json identifier(DaemonState state)
{
    const Json names{"responding", "running", "not_running", "not_ready",
                     "stopped",    "ended",   "silent",      nullptr};
    return names[static_cast<std::size_t>(state)];
}

// Since the daemon took a request. A client that has withdrawn its own hides that time.
std::optional<long long> read_age(client::Channel channel, const Daemon &daemon)
{
    const auto queue = queue_state(channel);
    if (!queue || queue->msg_rtime == 0 || daemon.process == 0)
        return std::nullopt;
    const pid_t reader = queue->msg_lrpid;
    if (reader != daemon.process && client::process_of(reader) != daemon.process)
        return std::nullopt;
    return std::max<long long>(0, std::time(nullptr) - queue->msg_rtime);
}

// Without an answer, people want to know which process it is.
std::string text_of(const Daemon &daemon, std::optional<long long> age)
{
    const Json name = identifier(daemon.state);
    std::string text = name.is_null() ? "unknown" : name.get<std::string>();
    std::replace(text.begin(), text.end(), '_', ' ');
    if (daemon.process > 0 && daemon.state != DaemonState::responding)
        text += " (" + client::process_name(daemon.process) +
                (age ? ", last read " + duration(*age) + " ago)" : ")");
    return text + (daemon.reason.empty() ? "" : "\n" + daemon.reason);
}

} // namespace

Daemon inspect_daemon(client::Channel channel, Asked asked)
{
    if (!queue_state(channel)) {
        if (errno == ENOENT)
            return {DaemonState::not_running, 0, "its queue is missing"};
        return {.reason = std::string("its queue can't be looked at: ") + std::strerror(errno)};
    }
    Daemon daemon{.process = last_reader(channel)};
    daemon.state = state_of(daemon.process, asked);
    if (daemon.state == DaemonState::unknown)
        daemon.reason = daemon.process > 0 ? "the process that last read its queue has ended"
                                           : "nothing was taken from its queue yet";
    return daemon;
}

void report_daemon(Report &report, client::Channel channel, const Daemon &daemon)
{
    const bool at = channel == client::Channel::at;
    const auto age = read_age(channel, daemon);
    const auto queue = queue_state(channel);
    const Json waiting = queue ? Json(queue->msg_qnum) : Json();
    const std::string name = at ? "AT daemon" : "QMI daemon";
    const auto add = [&report, at](Field field) {
        field.key.insert(0, at ? "at." : "qmi.");
        report.field("daemons", std::move(field));
    };
    add({.key = "state",
         .value = identifier(daemon.state),
         .text = text_of(daemon, age),
         .label = name});
    add({.key = "reason", .value = text_or_null(daemon.reason), .hidden = true});
    add({.key = "process",
         .value = daemon.process > 0 ? Json(daemon.process) : Json(),
         .hidden = true});
    add({.key = "last_read_age", .value = age ? Json(*age) : Json(), .unit = "s", .hidden = true});
    add({.key = "waiting",
         .value = waiting,
         .label = name + "'s requests waiting",
         .hidden = waiting == 0});
}

} // namespace cmifctl
