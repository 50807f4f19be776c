#include "checks.h"
#include "client/queues.h"

#include <array>
#include <cstdio>
#include <functional>

namespace cmifctl
{
namespace
{

using Access = QueueLook::Access;

Troubles of_queues(const Look &look, const std::function<std::string(const QueueLook &)> &text_of)
{
    Troubles troubles;
    for (const ChannelLook &channel : look.channels)
        for (const QueueLook *queue : {&channel.requests, &channel.replies})
            if (std::string text = text_of(*queue); !text.empty())
                troubles.emplace_back(queue->name + " " + text, std::to_string(queue->key));
    return troubles;
}

std::size_t payload_of(Channel channel)
{
    return channel == Channel::at ? CMIF_AT_PAYLOAD : CMIF_QMI_PAYLOAD;
}

} // namespace

Troubles checks::missing_queues(const Look &look)
{
    return of_queues(look, [](const QueueLook &queue) {
        return queue.access == Access::missing ? "does not exist" : "";
    });
}

Troubles checks::queue_permissions(const Look &look)
{
    constexpr unsigned everybody = 0666;
    return of_queues(look, [](const QueueLook &queue) -> std::string {
        if (queue.access == Access::forbidden)
            return "may not be used by this user";
        if (queue.access == Access::missing || (queue.mode & everybody) == everybody)
            return "";
        std::array<char, 16> mode{};
        std::snprintf(mode.data(), mode.size(), "%04o", queue.mode);
        return std::string("may not be used by every user (mode ") + mode.data() + ")";
    });
}

Troubles checks::full_queues(const Look &look)
{
    Troubles troubles;
    for (const ChannelLook &channel : look.channels) {
        if (channel.requests.full)
            troubles.push_back(channel.requests.name + " is full: no request fits");
        if (channel.replies.full)
            troubles.push_back(channel.replies.name + " is full of replies that no caller takes: " +
                               client::daemon_name(channel.channel) + " can't answer");
    }
    return troubles;
}

Troubles checks::waiting_requests(const Look &look)
{
    Troubles troubles;
    for (const ChannelLook &channel : look.channels)
        if (channel.daemon.state != DaemonState::responding && !channel.requests.records.empty())
            troubles.push_back(channel.requests.name + " holds " +
                               listed(channel.requests.records, "request"));
    return troubles;
}

Troubles checks::foreign_requests(const Look &look)
{
    Troubles troubles;
    for (const ChannelLook &channel : look.channels) {
        const auto foreign = some_of(channel.requests.records, [&](const QueuedRecord &record) {
            return !is_known(channel.channel, record.code) ||
                   record.size > payload_of(channel.channel);
        });
        if (!foreign.empty())
            troubles.push_back(channel.requests.name + " holds " + listed(foreign, "record") +
                               ", which " + client::daemon_name(channel.channel) +
                               " does not understand");
    }
    return troubles;
}

} // namespace cmifctl
