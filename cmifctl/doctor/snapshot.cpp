#include "snapshot.h"

#include <algorithm>

namespace cmifctl
{

std::string StoreSnapshot::value(const char *key) const
{
    return running.is_object() && running.contains(key) ? running[key].get<std::string>() : "";
}

std::string StoreSnapshot::name() const
{
    return path.empty() ? "the store" : "the store in " + path;
}

bool Snapshot::served() const
{
    return std::any_of(channels.begin(), channels.end(), [](const ChannelSnapshot &channel) {
        return channel.daemon.state == DaemonState::responding;
    });
}

Snapshot take_snapshot(const Context &context)
{
    Snapshot snapshot{inspect_queues(), {}, {}};
    inspect_daemons(context, snapshot.channels);
    snapshot.store = inspect_store(context);
    snapshot.profile_change = inspect_profile_change(snapshot.qmi());
    return snapshot;
}

} // namespace cmifctl
