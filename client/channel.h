// The two channels to the daemons, and a slot in shared tables for each of their request codes.
#ifndef CLIENT_CHANNEL_H
#define CLIENT_CHANNEL_H

#include "cmif/cmif.h"

#include <optional>
#include <sys/types.h>

namespace client
{

enum class Channel { none, at, qmi };

struct RequestCode {
    Channel channel = Channel::none;
    long code = 0;
};

constexpr key_t request_key(Channel channel)
{
    return channel == Channel::at ? CMIF_AT_REQUEST_KEY : CMIF_QMI_REQUEST_KEY;
}

constexpr key_t reply_key(Channel channel)
{
    return channel == Channel::at ? CMIF_AT_REPLY_KEY : CMIF_QMI_REPLY_KEY;
}

constexpr const char *daemon_name(Channel channel)
{
    return channel == Channel::at ? "the AT daemon" : "the QMI daemon";
}

// All programs of one system agree on these numbers: they index the semaphores and the table of
// unanswered requests. Codes that the interface doesn't have get no slot.
constexpr int max_slots = 64;
constexpr int slots_of_channel = max_slots / 2;

// Of no code, because those begin with 1: for what concerns the whole channel.
constexpr int slot_of(Channel channel)
{
    return channel == Channel::at ? 0 : slots_of_channel;
}

constexpr std::optional<int> slot_of(RequestCode request)
{
    if (request.channel == Channel::none || request.code < 1 || request.code >= slots_of_channel)
        return std::nullopt;
    return slot_of(request.channel) + static_cast<int>(request.code);
}

} // namespace client

#endif
