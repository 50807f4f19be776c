#include "hooks.h"

#include "cmif/cmif.h"
#include "platform/tarn_nvram_config.h"

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <sys/msg.h>

// Nothing in these functions has a destructor while the next function runs: a thread may be
// cancelled there.
namespace cmif_record
{
namespace
{

std::atomic<Recording *> current = nullptr;

template <class Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

struct FoundQueue {
    std::optional<Queue> queue; // none: not one of ours
    bool has_room;              // for a record of the given size
};

std::optional<Queue> queue_of(key_t key)
{
    switch (key) {
    case CMIF_AT_REQUEST_KEY:
        return Queue{Channel::at, Direction::request};
    case CMIF_AT_REPLY_KEY:
        return Queue{Channel::at, Direction::reply};
    case CMIF_QMI_REQUEST_KEY:
        return Queue{Channel::qmi, Direction::request};
    case CMIF_QMI_REPLY_KEY:
        return Queue{Channel::qmi, Direction::reply};
    default:
        return std::nullopt;
    }
}

// The system is asked each time: a queue can be removed and made again under another id, and
// another namespace has other queues under the same ids.
FoundQueue find_queue(int id, std::size_t size)
{
    const int error = errno;
    msqid_ds found{};
    const bool known = msgctl(id, IPC_STAT, &found) == 0;
    errno = error;
    if (!known)
        return {std::nullopt, false};
    return {queue_of(found.msg_perm.__key), found.__msg_cbytes + size <= found.msg_qbytes};
}

Record record_at(const void *bytes, std::size_t size)
{
    Record record{0, {static_cast<const char *>(bytes) + sizeof(long), size}};
    std::memcpy(&record.code, bytes, sizeof record.code);
    return record;
}

ssize_t receive(int id, void *bytes, std::size_t size, long type, int flags)
{
    using Receive = ssize_t (*)(int, void *, std::size_t, long, int);
    static const auto real = next<Receive>("msgrcv");
    Recording *const recording = (flags & MSG_COPY) != 0 ? nullptr : current.load();
    if (!recording)
        return real(id, bytes, size, type, flags);
    const FoundQueue found = find_queue(id, 0);
    const ssize_t received = real(id, bytes, size, type, flags);
    if (found.queue && received >= 0)
        recording->add(*found.queue, Action::received,
                       record_at(bytes, static_cast<std::size_t>(received)));
    return received;
}

// The line is written first, so that it precedes all that the receiver does. Where the queue is
// full it follows: the record may never be sent.
int send(int id, const void *bytes, std::size_t size, int flags)
{
    using Send = int (*)(int, const void *, std::size_t, int);
    static const auto real = next<Send>("msgsnd");
    Recording *const recording = current.load();
    const FoundQueue found = recording ? find_queue(id, size) : FoundQueue{};
    if (!found.queue)
        return real(id, bytes, size, flags);
    if (found.has_room)
        recording->add(*found.queue, Action::sent, record_at(bytes, size));
    const int result = real(id, bytes, size, flags);
    if (result == 0 && !found.has_room)
        recording->add(*found.queue, Action::sent, record_at(bytes, size));
    if (result != 0 && found.has_room)
        recording->add_failure();
    return result;
}

int set(const char *key, const char *value)
{
    using Set = int (*)(const char *, const char *);
    static const auto real = next<Set>("tarnNvramConfig_set");
    if (!real) {
        errno = ENOSYS;
        return -1;
    }
    Recording *const recording = key && value ? current.load() : nullptr;
    if (recording)
        recording->add_setting(key, value);
    const int result = real(key, value);
    if (recording && result != 0)
        recording->add_failure();
    return result;
}

} // namespace

void record_to(Recording &recording)
{
    current = &recording;
}

} // namespace cmif_record

extern "C" ssize_t msgrcv(int msqid, void *msgp, std::size_t msgsz, long msgtyp, int msgflg)
{
    return cmif_record::receive(msqid, msgp, msgsz, msgtyp, msgflg);
}

extern "C" int msgsnd(int msqid, const void *msgp, std::size_t msgsz, int msgflg)
{
    return cmif_record::send(msqid, msgp, msgsz, msgflg);
}

extern "C" int tarnNvramConfig_set(const char *key, const char *value)
{
    return cmif_record::set(key, value);
}
