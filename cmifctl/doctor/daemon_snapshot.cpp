#include "client/code_lock.h"
#include "client/file.h"
#include "client/queues.h"
#include "client/unanswered.h"
#include "cmif/cmif.h"
#include "cmifctl/calls.h"
#include "cmifctl/verbs/qmi_readings.h"
#include "cmifctl/verbs/readings.h"
#include "snapshot.h"

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cmifctl
{
namespace
{

constexpr double probe_timeout = 2; // seconds
constexpr double short_change = 5;  // a caller may not have sent its request yet

// Requests that read and have no side effects.
std::vector<Call> probes_of(Channel channel)
{
    // clang-format off
    if (channel == Channel::at)
        return {{.request = at_request("shared_CMIF_get_ModeManualSearch", CMIF_AT_GET_SEARCH_STATE),
                 .body = [](Json &) { return shared_CMIF_get_ModeManualSearch(); }},
                {.request = at_request("shared_CMIF_get_DomainServiceStatus", CMIF_AT_GET_PACKET_DOMAIN),
                 .body = [](Json &out) { return read_text(out, shared_CMIF_get_DomainServiceStatus); }}};
    return {sim_state_call(),
            {.request = qmi_request("shared_CMIF_get_ps_service", CMIF_QMI_GET_PACKET_SERVICE),
             .body = [](Json &) { char text[51]{}; return shared_CMIF_get_ps_service(text); }}};
    // clang-format on
}

// A call takes stale replies of its code away, waits for earlier ones and for another caller.
bool is_free(const ChannelSnapshot &snapshot, client::RequestCode code)
try {
    const std::vector<long> left = codes_of(snapshot.replies.records);
    return std::find(left.begin(), left.end(), code.code) == left.end() &&
           !client::lock_process(code) && !client::Unanswered().is_awaited(code);
} catch (const Failure &) {
    return false;
}

// The answer would find no room in a full queue, and stay due.
Asked ask(const Context &context, const ChannelSnapshot &snapshot)
{
    if (snapshot.channel == Channel::qmi && !is_marked_ready())
        return Asked::not_ready;
    if (client::filling_of(snapshot.channel, client::reply_key(snapshot.channel)).full)
        return Asked::no;
    client::CallOptions options = context.options;
    options.timeout = probe_timeout;
    for (const Call &probe : probes_of(snapshot.channel)) {
        if (!is_free(snapshot, probe.request.code))
            continue;
        try {
            const bool answered = client::call(options, probe).answered; // with an error, too
            return answered ? Asked::answered : Asked::silent;
        } catch (const Failure &) {
            return Asked::silent;
        }
    }
    return Asked::no;
}

// A daemon that is stopped is not asked: it would answer long after.
Daemon daemon_of(const Context &context, const ChannelSnapshot &snapshot)
{
    using Access = QueueSnapshot::Access;
    Daemon seen = inspect_daemon(snapshot.channel);
    const bool usable =
        snapshot.requests.access == Access::usable && snapshot.replies.access != Access::forbidden;
    if (!usable || seen.state == DaemonState::stopped)
        return seen;
    return inspect_daemon(snapshot.channel, ask(context, snapshot));
}

} // namespace

void inspect_daemons(const Context &context, std::array<ChannelSnapshot, 2> &channels)
{
    for (ChannelSnapshot &snapshot : channels)
        snapshot.daemon = daemon_of(context, snapshot);
}

bool is_marked_ready()
{
    const client::File file(open(CMIF_QMI_READY_FILE, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    char text[2]{};
    struct stat found {
    };
    return file && fstat(file.fd(), &found) == 0 && S_ISREG(found.st_mode) &&
           ::read(file.fd(), text, sizeof text) == sizeof text && std::string(text, 2) == "on";
}

// The QMI daemon serves one request after the other: while it answers another one, it carries out
// no change.
std::optional<ProfileChange> inspect_profile_change(const ChannelSnapshot &qmi)
{
    struct stat marker {
    };
    if (lstat(CMIF_PROFILE_BUSY_FILE, &marker) != 0)
        return std::nullopt;
    const double age = std::difftime(std::time(nullptr), marker.st_mtime);
    const std::vector<long> waiting = codes_of(qmi.requests.records);
    const bool locked = client::lock_process({Channel::qmi, CMIF_QMI_MODIFY_PROFILE}).has_value();
    const bool queued =
        std::find(waiting.begin(), waiting.end(), CMIF_QMI_MODIFY_PROFILE) != waiting.end();
    constexpr DaemonState idle[]{DaemonState::responding, DaemonState::ended,
                                 DaemonState::not_running, DaemonState::not_ready};
    const bool daemon_may =
        std::find(std::begin(idle), std::end(idle), qmi.daemon.state) == std::end(idle);
    return ProfileChange{age, age < short_change || locked || queued || daemon_may};
}

} // namespace cmifctl
