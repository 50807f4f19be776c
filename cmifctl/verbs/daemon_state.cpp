#include "daemon_readings.h"

#include "client/channel.h"
#include "client/process.h"
#include "client/unanswered.h"
#include "cmifctl/output/times.h"
#include "platform/host_store.h"

#include <ctime>
#include <optional>
#include <sys/msg.h>

namespace cmifctl
{
namespace
{

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

// Unknown while nothing was taken yet, by a process that can't be seen from here, or by one that
// has ended while another daemon runs, which may have taken nothing so far.
Json serves(bool queue, pid_t reader)
{
    if (!queue)
        return false;
    if (reader > 0 && client::process_exists(reader))
        return true;
    const bool none_runs = *host_store_announced() == '\0';
    return reader > 0 && none_runs ? Json(false) : Json();
}

std::string serves_text(const Json &serves, bool queue, pid_t reader)
{
    if (serves.is_null())
        return reader > 0 ? "not known: its last reader has ended"
                          : "not known: nothing was taken from its queue yet";
    if (!queue)
        return "not started: its queue is missing";
    return serves == true ? "serving" : "ended";
}

Json seconds_since(std::time_t moment)
{
    return moment > 0 ? Json(std::max<long long>(0, std::time(nullptr) - moment)) : Json();
}

Field age(const char *key, const Json &seconds)
{
    return {key, seconds, "s", seconds.is_null() ? "" : duration(seconds.get<long long>())};
}

} // namespace

void report_at_daemon(Context &context)
{
    const auto queue = queue_state(client::Channel::at);
    const pid_t reader = queue ? last_reader(client::Channel::at) : 0;
    const Json state = serves(queue.has_value(), reader);
    // A client that has withdrawn its request hides the time of the daemon's own reading.
    const bool read_last = reader > 0 && client::process_of(queue->msg_lrpid) == reader;
    const Json waiting = queue ? Json(queue->msg_qnum) : Json();
    const auto add = [&context](Field field) { context.report.field("daemons", std::move(field)); };
    add({.key = "at.serves",
         .value = state,
         .text = serves_text(state, queue.has_value(), reader),
         .label = "AT daemon"});
    add({.key = "at.last_reader.process",
         .value = reader > 0 ? Json(reader) : Json(),
         .text = reader > 0 ? client::process_name(reader) : "",
         .label = "last reader"});
    Field last_read =
        age("at.last_reader.age", read_last ? seconds_since(queue->msg_rtime) : Json());
    last_read.label = "last read";
    add(std::move(last_read));
    add({.key = "at.waiting",
         .value = waiting,
         .label = "requests waiting",
         .hidden = waiting == 0});
}

void report_store(Context &context)
{
    const std::string daemons = host_store_announced();
    const double age_of_values = host_store_age();
    context.report.field("store", {"directory", host_store_directory()});
    context.report.field("store", {.key = "daemons_directory",
                                   .value = daemons.empty() ? Json() : Json(daemons),
                                   .hidden = daemons == host_store_directory()});
    context.report.field(
        "store",
        age("age", age_of_values < 0 ? Json() : Json(static_cast<long long>(age_of_values))));
}

} // namespace cmifctl
