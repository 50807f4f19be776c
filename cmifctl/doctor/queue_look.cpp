#include "client/queues.h"
#include "look.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <sys/msg.h>
#include <unistd.h>

namespace cmifctl
{
namespace
{

std::vector<QueuedRecord> records_now(key_t key)
{
    std::vector<QueuedRecord> records;
    client::peek(msgget(key, 0), [&](long type, std::string_view payload) {
        records.push_back({type, payload.size()});
    });
    std::sort(records.begin(), records.end());
    return records;
}

QueueLook look_at_queue(Channel channel, key_t key, const std::string &what)
{
    QueueLook look{.key = key, .name = what + " (" + std::to_string(key) + ")"};
    msqid_ds state{};
    const int queue = msgget(key, 0);
    if (queue == -1 && errno == ENOENT)
        return look;
    look.access = QueueLook::Access::forbidden;
    if (queue == -1 || msgctl(queue, IPC_STAT, &state) != 0)
        return look;
    look.access = QueueLook::Access::usable;
    look.mode = state.msg_perm.mode & 0777;
    look.full = client::filling_of(channel, key).full;
    look.records = records_now(key);
    return look;
}

// Drops what has been taken in the meantime.
void keep_queued(QueueLook &look, key_t key)
{
    const std::vector<QueuedRecord> now = records_now(key);
    std::vector<QueuedRecord> both;
    std::set_intersection(look.records.begin(), look.records.end(), now.begin(), now.end(),
                          std::back_inserter(both));
    look.records = std::move(both);
}

ChannelLook look_at_channel(Channel channel, const std::string &name)
{
    return {.channel = channel,
            .requests = look_at_queue(channel, client::request_key(channel),
                                      "the " + name + " request queue"),
            .replies =
                look_at_queue(channel, client::reply_key(channel), "the " + name + " reply queue")};
}

} // namespace

std::array<ChannelLook, 2> look_at_queues()
{
    std::array<ChannelLook, 2> channels{
        {look_at_channel(Channel::at, "AT"), look_at_channel(Channel::qmi, "QMI")}};
    constexpr useconds_t while_a_record_passes = 100'000;
    usleep(while_a_record_passes);
    for (ChannelLook &look : channels) {
        keep_queued(look.requests, client::request_key(look.channel));
        keep_queued(look.replies, client::reply_key(look.channel));
    }
    return channels;
}

} // namespace cmifctl
