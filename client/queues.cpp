#include "queues.h"

#include "code_lock.h"

#include <cerrno>
#include <string_view>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <vector>

namespace client
{
namespace
{

constexpr std::size_t max_message = std::size_t{64} * 1024; // the kernel's default limit is 8 KiB

struct Message {
    long type;
    char payload[max_message];
};

std::vector<char> message_room()
{
    return std::vector<char>(sizeof(Message));
}

std::string_view bytes_of(const SentRecord &sent)
{
    return {sent.payload(), sent.size()};
}

struct Oldest {
    bool known = false;
    bool is_ours = false;
    bool ours_follows = false;
};

// The oldest record of the request's code.
Oldest oldest_of(RequestCode request, const SentRecord &sent)
{
    Oldest oldest;
    oldest.known = peek(sent.queue(), [&](long type, std::string_view payload) {
        if (type != request.code)
            return;
        oldest.ours_follows = oldest.ours_follows || oldest.is_ours;
        oldest.is_ours = payload == bytes_of(sent);
    });
    return oldest;
}

// The kernel may hand a reply to a caller that is killed before it can note it. Of a call's further
// requests that can't be told: the last reader of the queue is this caller anyway.
bool reply_was_lost(RequestCode request, const SentRecord &sent)
{
    msqid_ds state{};
    return sent.state() == SentRecord::State::sent && sent.is_first() &&
           msgctl(msgget(reply_key(request.channel), 0), IPC_STAT, &state) == 0 &&
           state.msg_lrpid == sent.sender();
}

} // namespace

bool queue_exists(Channel channel)
{
    return msgget(request_key(channel), 0) != -1;
}

Filling filling_of(Channel channel, key_t key)
{
    const std::size_t record = channel == Channel::at ? CMIF_AT_PAYLOAD : CMIF_QMI_PAYLOAD;
    msqid_ds state{};
    if (msgctl(msgget(key, 0), IPC_STAT, &state) != 0)
        return {};
    const bool full =
        state.msg_cbytes + record > state.msg_qbytes || state.msg_qnum >= state.msg_qbytes;
    return {full, state.msg_qnum};
}

bool peek(int queue, const std::function<void(long type, std::string_view payload)> &each)
{
    std::vector<char> room = message_room();
    auto *message = reinterpret_cast<Message *>(room.data());
    msqid_ds state{};
    if (msgctl(queue, IPC_STAT, &state) != 0)
        return false;
    for (auto index = static_cast<long>(state.msg_qnum) - 1; index >= 0; --index) {
        const ssize_t size = msgrcv(queue, message, max_message, index, MSG_COPY | IPC_NOWAIT);
        if (size == -1 && errno != ENOMSG) // ENOMSG: the queue has become shorter
            return false;
        if (size != -1)
            each(message->type, {message->payload, static_cast<std::size_t>(size)});
    }
    return true;
}

int clear_replies(RequestCode request)
{
    const int queue = msgget(reply_key(request.channel), 0);
    long type = 0; // and no room for a payload, which is cut off
    int count = 0;
    while (msgrcv(queue, &type, 0, request.code, IPC_NOWAIT | MSG_NOERROR) == 0)
        ++count;
    return count;
}

Withdrawal withdraw(RequestCode request, const SentRecord &sent, Unanswered &unanswered)
{
    if (sent.state() == SentRecord::State::not_sent)
        return Withdrawal::nothing_sent;
    if (sent.state() == SentRecord::State::answered)
        return Withdrawal::answered;
    msqid_ds state{};
    if (msgctl(sent.queue(), IPC_STAT, &state) != 0)
        return Withdrawal::queue_gone;
    if (reply_was_lost(request, sent)) {
        unanswered.remove(request);
        return Withdrawal::answered;
    }
    const WithdrawalLock lock(request.channel);
    const Oldest oldest = oldest_of(request, sent);
    if (!oldest.known)
        return Withdrawal::unknown;
    if (!oldest.is_ours)
        return oldest.ours_follows ? Withdrawal::kept : Withdrawal::taken;
    unanswered.note_withdrawal(request.channel);
    std::vector<char> room = message_room();
    auto *message = reinterpret_cast<Message *>(room.data());
    const ssize_t size =
        msgrcv(sent.queue(), message, max_message, request.code, IPC_NOWAIT | MSG_NOERROR);
    if (size == -1)
        return Withdrawal::taken; // the daemon was quicker
    if (std::string_view(message->payload, static_cast<std::size_t>(size)) != bytes_of(sent)) {
        // The daemon was quicker, and this is another program's next request of the same code.
        msgsnd(sent.queue(), message, static_cast<std::size_t>(size), IPC_NOWAIT);
        return Withdrawal::taken;
    }
    unanswered.remove(request);
    return Withdrawal::withdrawn;
}

} // namespace client
