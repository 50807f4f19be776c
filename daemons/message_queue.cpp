#include "message_queue.h"

#include <cerrno>
#include <cstring>
#include <err.h>
#include <sys/ipc.h>
#include <sys/msg.h>

namespace daemons
{

using namespace std::chrono_literals;

// Looked up every time, since other processes may remove the queue.
int MessageQueue::look_up() const
{
    return msgget(key_, IPC_CREAT | 0666);
}

bool MessageQueue::prepare() const
{
    if (look_up() >= 0)
        return true;
    warn("can't use message queue %d", static_cast<int>(key_));
    return false;
}

void MessageQueue::clear() const
{
    long type = 0; // and no room for the payload, which is cut off
    while (msgrcv(look_up(), &type, 0, 0, MSG_NOERROR | IPC_NOWAIT) == 0)
        continue;
}

std::optional<std::size_t> MessageQueue::receive(void *record, std::size_t room) const
{
    const int id = look_up();
    const ssize_t size = id < 0 ? -1 : msgrcv(id, record, room, 0, MSG_NOERROR);
    if (size < 0)
        return std::nullopt;
    return static_cast<std::size_t>(size);
}

void MessageQueue::report_dropped(const void *record, const char *reason) const
{
    long code = 0;
    std::memcpy(&code, record, sizeof code);
    warnx("reply to request %ld dropped: message queue %d %s", code, static_cast<int>(key_),
          reason);
}

// A queue that callers don't empty must not end the service for all others.
bool MessageQueue::send(const void *record, std::size_t payload, const StopFlag &stop) const
{
    const auto end = std::chrono::steady_clock::now() + max_wait;
    do {
        const int id = look_up();
        if (id >= 0 && msgsnd(id, record, payload, IPC_NOWAIT) == 0)
            return true;
        if (std::chrono::steady_clock::now() >= end) {
            report_dropped(record, errno == EAGAIN ? "is full" : "can't be used");
            return false;
        }
    } while (!stop.wait_for(20ms));
    return false;
}

} // namespace daemons
