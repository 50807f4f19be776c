#include "client/queues.h"
#include "snapshot.h"

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

QueueSnapshot inspect_queue(Channel channel, key_t key, const std::string &what)
{
    QueueSnapshot snapshot{.key = key, .name = what + " (" + std::to_string(key) + ")"};
    msqid_ds state{};
    const int queue = msgget(key, 0);
    if (queue == -1 && errno == ENOENT)
        return snapshot;
    snapshot.access = QueueSnapshot::Access::forbidden;
    if (queue == -1 || msgctl(queue, IPC_STAT, &state) != 0)
        return snapshot;
    snapshot.access = QueueSnapshot::Access::usable;
    snapshot.mode = state.msg_perm.mode & 0777;
    snapshot.full = client::filling_of(channel, key).full;
    snapshot.records = records_now(key);
    return snapshot;
}

// Drops what has been taken in the meantime.
void keep_queued(QueueSnapshot &snapshot, key_t key)
{
    const std::vector<QueuedRecord> now = records_now(key);
    std::vector<QueuedRecord> both;
    std::set_intersection(snapshot.records.begin(), snapshot.records.end(), now.begin(), now.end(),
                          std::back_inserter(both));
    snapshot.records = std::move(both);
}

ChannelSnapshot inspect_channel(Channel channel, const std::string &name)
{
    return {.channel = channel,
            .requests = inspect_queue(channel, client::request_key(channel),
                                      "the " + name + " request queue"),
            .replies =
                inspect_queue(channel, client::reply_key(channel), "the " + name + " reply queue")};
}

} // namespace

std::array<ChannelSnapshot, 2> inspect_queues()
{
    std::array<ChannelSnapshot, 2> channels{
        {inspect_channel(Channel::at, "AT"), inspect_channel(Channel::qmi, "QMI")}};
    constexpr useconds_t while_a_record_passes = 100'000;
    usleep(while_a_record_passes);
    for (ChannelSnapshot &snapshot : channels) {
        keep_queued(snapshot.requests, client::request_key(snapshot.channel));
        keep_queued(snapshot.replies, client::reply_key(snapshot.channel));
    }
    return channels;
}

} // namespace cmifctl
