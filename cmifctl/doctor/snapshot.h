// What the doctor sees of the router at one moment. Taking one removes nothing and is bounded in
// time.
#ifndef CMIFCTL_DOCTOR_SNAPSHOT_H
#define CMIFCTL_DOCTOR_SNAPSHOT_H

#include "client/channel.h"
#include "cmifctl/context.h"
#include "cmifctl/verbs/daemon_state.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace cmifctl
{

using client::Channel;

// A record that stayed in a queue while the snapshot was taken.
struct QueuedRecord {
    long code;
    std::size_t size;
    auto operator<=>(const QueuedRecord &) const = default;
};

struct QueueSnapshot {
    key_t key;
    std::string name; // "the AT reply queue (900)"
    enum class Access { missing, forbidden, usable } access = Access::missing;
    unsigned mode = 0;
    bool full = false;
    std::vector<QueuedRecord> records{};
};

struct ChannelSnapshot {
    Channel channel;
    QueueSnapshot requests;
    QueueSnapshot replies;
    Daemon daemon{};
};

struct StoreSnapshot {
    Json running{};    // all settings; null when they can't be read
    Json saved{};      // the same of the saved configuration
    std::string error; // why they can't be read
    std::string path;  // of this process's store, "" of a platform's
    std::string other; // says that the daemons use another one; "" when that isn't known

    std::string value(const char *key) const;
    std::string name() const; // for messages
};

// A change of the connection profile, by its marker.
struct ProfileChange {
    double age = 0; // seconds
    bool worked_on; // by a process that is known, or maybe by one that isn't
};

struct Snapshot {
    std::array<ChannelSnapshot, 2> channels;
    StoreSnapshot store;
    std::optional<ProfileChange> profile_change;

    const ChannelSnapshot &at() const { return channels[0]; }
    const ChannelSnapshot &qmi() const { return channels[1]; }
    bool served() const;
};

Snapshot take_snapshot(const Context &context);

// Parts of it.
std::array<ChannelSnapshot, 2> inspect_queues();
void inspect_daemons(const Context &context, std::array<ChannelSnapshot, 2> &channels);
StoreSnapshot inspect_store(const Context &context);
std::optional<ProfileChange> inspect_profile_change(const ChannelSnapshot &qmi);

// Whether the interface has the code.
bool is_known(Channel channel, long code);

// Codes of records, once each.
std::vector<long> codes_of(const std::vector<QueuedRecord> &records);
// "3 requests, of codes 4, 12"; `what` is one of them.
std::string listed(const std::vector<QueuedRecord> &records, const std::string &what);
std::vector<QueuedRecord> some_of(const std::vector<QueuedRecord> &records,
                                  const std::function<bool(const QueuedRecord &)> &wanted);

// Whether the marker of the QMI daemon begins with "on". A FIFO is not opened.
bool is_marked_ready();

} // namespace cmifctl

#endif
