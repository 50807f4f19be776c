#include "message_queue.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/ipc.h>
#include <sys/msg.h>

namespace sim
{

using namespace std::chrono_literals;

// Looked up every time, since others may remove the queue.
int MessageQueue::look_up() const
{
    return msgget(key_, IPC_CREAT | 0666);
}

bool MessageQueue::prepare() const
{
    if (look_up() >= 0)
        return true;
    std::fprintf(stderr, "cmif-sim: can't use message queue %d: %s\n", static_cast<int>(key_),
                 std::strerror(errno));
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

bool MessageQueue::send(const void *record, std::size_t payload, const StopFlag &stop) const
{
    do {
        const int id = look_up();
        if (id >= 0 && msgsnd(id, record, payload, IPC_NOWAIT) == 0)
            return true;
    } while (!stop.wait_for(20ms));
    return false;
}

} // namespace sim
