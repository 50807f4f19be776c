#include "daemon_readings.h"

#include "client/channel.h"
#include "client/process.h"
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

// Unknown while nothing was taken yet, or by a process that can't be seen from here.
Json serves(const std::optional<msqid_ds> &queue)
{
    if (!queue)
        return false;
    return queue->msg_lrpid > 0 ? Json(client::process_exists(queue->msg_lrpid)) : Json();
}

std::string serves_text(const Json &serves, bool queue)
{
    if (serves.is_null())
        return "not known: nothing was taken from its queue yet";
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
    const Json state = serves(queue);
    const pid_t reader = queue ? queue->msg_lrpid : 0;
    const Json waiting = queue ? Json(queue->msg_qnum) : Json();
    const auto add = [&context](Field field) { context.report.field("daemons", std::move(field)); };
    add({.key = "at.serves",
         .value = state,
         .text = serves_text(state, queue.has_value()),
         .label = "AT daemon"});
    add({.key = "at.last_reader.process",
         .value = reader > 0 ? Json(reader) : Json(),
         .text = reader > 0 ? client::process_name(reader) : "",
         .label = "last reader"});
    Field last_read = age("at.last_reader.age", queue ? seconds_since(queue->msg_rtime) : Json());
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
