#include "look.h"

#include <algorithm>

namespace cmifctl
{

std::string StoreLook::value(const char *key) const
{
    return running.is_object() && running.contains(key) ? running[key].get<std::string>() : "";
}

std::string StoreLook::name() const
{
    return path.empty() ? "the store" : "the store in " + path;
}

bool Look::served() const
{
    return std::any_of(channels.begin(), channels.end(), [](const ChannelLook &channel) {
        return channel.daemon.state == DaemonState::responding;
    });
}

Look take_look(const Context &context)
{
    Look look{look_at_queues(), {}, {}};
    look_at_daemons(context, look.channels);
    look.store = look_at_store(context);
    look.profile_change = look_at_profile_change(look.qmi());
    return look;
}

} // namespace cmifctl
