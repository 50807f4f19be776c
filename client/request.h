// A record on its way to a daemon: what it holds, and how it is taken back.
#ifndef CLIENT_REQUEST_H
#define CLIENT_REQUEST_H

#include <string>

namespace cmifctl
{

enum class Channel { none, at, qmi };

// The record that a call of the library sends. Who looks at the queue recognises it by all of
// these; two equal requests are as good as one another.
struct Request {
    const char *name = ""; // the call's
    Channel channel = Channel::none;
    long code = 0;
    std::string payload{};
};

struct AtFields {
    std::string first{};
    std::string second{};
    std::string third{};
    std::string value{};
};

// Fails when a text does not fit its field: 29 bytes, 21 for the value.
Request at_request(const char *name, long code, const AtFields &fields = {});

// All zeros, as the QMI requests without arguments are.
Request qmi_request(const char *name, long code, std::size_t length);

// A call that asks no daemon.
inline Request no_request(const char *name)
{
    return {.name = name};
}

enum class Withdrawal { withdrawn, not_queued, queue_full, no_queue };

// Takes one request equal to this one off its queue; the others stay, in their order.
Withdrawal withdraw(const Request &request);

// Whether somebody has made the channel's request queue.
bool queue_exists(Channel channel);

} // namespace cmifctl

#endif
