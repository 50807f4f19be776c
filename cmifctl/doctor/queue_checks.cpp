#include "checks.h"
#include "client/queues.h"

#include <array>
#include <cstdio>
#include <functional>

namespace cmifctl
{
namespace
{

using Access = QueueSnapshot::Access;

Problems of_queues(const Snapshot &snapshot,
                   const std::function<std::string(const QueueSnapshot &)> &text_of)
{
    Problems problems;
    for (const ChannelSnapshot &channel : snapshot.channels)
        for (const QueueSnapshot *queue : {&channel.requests, &channel.replies})
            if (std::string text = text_of(*queue); !text.empty())
                problems.emplace_back(queue->name + " " + text, std::to_string(queue->key));
    return problems;
}

std::size_t payload_of(Channel channel)
{
    return channel == Channel::at ? CMIF_AT_PAYLOAD : CMIF_QMI_PAYLOAD;
}

} // namespace

Problems checks::missing_queues(const Snapshot &snapshot)
{
    return of_queues(snapshot, [](const QueueSnapshot &queue) {
        return queue.access == Access::missing ? "does not exist" : "";
    });
}

Problems checks::queue_permissions(const Snapshot &snapshot)
{
    constexpr unsigned everybody = 0666;
    return of_queues(snapshot, [](const QueueSnapshot &queue) -> std::string {
        if (queue.access == Access::forbidden)
            return "may not be used by this user";
        if (queue.access == Access::missing || (queue.mode & everybody) == everybody)
            return "";
        std::array<char, 16> mode{};
        std::snprintf(mode.data(), mode.size(), "%04o", queue.mode);
        return std::string("may not be used by every user (mode ") + mode.data() + ")";
    });
}

Problems checks::full_queues(const Snapshot &snapshot)
{
    Problems problems;
    for (const ChannelSnapshot &channel : snapshot.channels) {
        if (channel.requests.full)
            problems.push_back(channel.requests.name + " is full: no request fits");
        if (channel.replies.full)
            problems.push_back(channel.replies.name + " is full of replies that no caller takes: " +
                               client::daemon_name(channel.channel) + " can't answer");
    }
    return problems;
}

Problems checks::waiting_requests(const Snapshot &snapshot)
{
    Problems problems;
    for (const ChannelSnapshot &channel : snapshot.channels)
        if (channel.daemon.state != DaemonState::responding && !channel.requests.records.empty())
            problems.push_back(channel.requests.name + " holds " +
                               listed(channel.requests.records, "request"));
    return problems;
}

Problems checks::foreign_requests(const Snapshot &snapshot)
{
    Problems problems;
    for (const ChannelSnapshot &channel : snapshot.channels) {
        const auto foreign = some_of(channel.requests.records, [&](const QueuedRecord &record) {
            return !is_known(channel.channel, record.code) ||
                   record.size > payload_of(channel.channel);
        });
        if (!foreign.empty())
            problems.push_back(channel.requests.name + " holds " + listed(foreign, "record") +
                               ", which " + client::daemon_name(channel.channel) +
                               " does not understand");
    }
    return problems;
}

} // namespace cmifctl
