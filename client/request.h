// The record that a call sends to a daemon, and its withdrawal from the queue.
#ifndef CLIENT_REQUEST_H
#define CLIENT_REQUEST_H

#include <string>

namespace client
{

enum class Channel { none, at, qmi };

// Identifies a request on the queue; equal requests are interchangeable.
struct Request {
    const char *name = ""; // of the library's function
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

// Throws a Failure when a text does not fit its field: 29 bytes, 21 for the value.
Request at_request(const char *name, long code, const AtFields &fields = {});

// With a payload of zeros, as QMI requests without arguments have.
Request qmi_request(const char *name, long code, std::size_t length);

// For a call that sends nothing to a daemon.
inline Request no_request(const char *name)
{
    return {.name = name};
}

enum class Withdrawal { withdrawn, not_queued, queue_full, no_queue };

// Takes one request equal to this one off its queue; the others stay, in their order.
Withdrawal withdraw(const Request &request);

// Whether the channel's request queue has been created.
bool queue_exists(Channel channel);

} // namespace client

#endif
