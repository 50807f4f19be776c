#include "request.h"

#include "cmif/cmif.h"
#include "failure.h"

#include <cstddef>
#include <cstring>
#include <optional>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <unistd.h>
#include <vector>

namespace client
{
namespace
{

constexpr std::size_t max_message = 8192;

struct Message {
    long type;
    char payload[max_message];
};

int request_queue(Channel channel)
{
    return msgget(channel == Channel::at ? CMIF_AT_REQUEST_KEY : CMIF_QMI_REQUEST_KEY, 0);
}

template <std::size_t N>
void set_field(char (&field)[N], const std::string &text)
{
    if (text.size() >= N)
        throw Failure(Exit::invalid, "text too long: " + std::to_string(text.size()) + " bytes",
                      "The request has room for " + std::to_string(N - 1) + " bytes.");
    std::memcpy(field, text.data(), text.size());
}

bool equal(const Request &request, const Message &message, std::size_t size)
{
    return size == request.payload.size() &&
           std::memcmp(message.payload, request.payload.data(), size) == 0;
}

using Taken = std::vector<std::pair<Message, std::size_t>>;

std::optional<std::size_t> take(int queue, long type, Message &message)
{
    const ssize_t size = msgrcv(queue, &message, max_message, type, IPC_NOWAIT);
    return size == -1 ? std::nullopt : std::optional(static_cast<std::size_t>(size));
}

// Requests of other callers. The queue has no room only while another process fills it meanwhile.
void put_back(int queue, const Taken &messages)
{
    constexpr int attempts = 200;
    constexpr useconds_t pause = 10'000;
    for (const auto &[message, size] : messages)
        for (int i = 0; i < attempts && msgsnd(queue, &message, size, IPC_NOWAIT) == -1; ++i)
            usleep(pause);
}

bool full(int queue, std::size_t size)
{
    msqid_ds state{};
    return msgctl(queue, IPC_STAT, &state) == 0 && state.__msg_cbytes + size > state.msg_qbytes;
}

} // namespace

Request at_request(const char *name, long code, const AtFields &fields)
{
    cmif_msg record{};
    set_field(record.set_string, fields.first);
    set_field(record.set_string2, fields.second);
    set_field(record.set_string3, fields.third);
    set_field(record.set_value, fields.value);
    const auto *bytes = reinterpret_cast<const char *>(&record) + offsetof(cmif_msg, set_string);
    return {name, Channel::at, code, std::string(bytes, CMIF_AT_PAYLOAD)};
}

Request qmi_request(const char *name, long code, std::size_t length)
{
    return {name, Channel::qmi, code, std::string(length, '\0')};
}

Withdrawal withdraw(const Request &request)
{
    if (request.channel == Channel::none || request.code <= 0)
        return Withdrawal::no_queue;
    const int queue = request_queue(request.channel);
    if (queue == -1)
        return Withdrawal::no_queue;
    const bool was_full = full(queue, request.payload.size());

    Taken others;
    bool withdrawn = false;
    Message message{};
    while (const auto size = take(queue, request.code, message)) {
        if (!withdrawn && equal(request, message, *size))
            withdrawn = true;
        else
            others.emplace_back(message, *size);
        if (withdrawn && others.empty())
            break; // ours was first: the order of the rest is unchanged
    }
    put_back(queue, others);
    if (withdrawn)
        return Withdrawal::withdrawn;
    return was_full ? Withdrawal::queue_full : Withdrawal::not_queued;
}

bool queue_exists(Channel channel)
{
    return request_queue(channel) != -1;
}

} // namespace client
