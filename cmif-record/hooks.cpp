#include "hooks.h"

#include "cmif/cmif.h"
#include "platform/tarn_nvram_config.h"

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <optional>
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

struct KnownQueue {
    key_t key;
    std::atomic<int> id = -1;
};

KnownQueue known[] = {
    {CMIF_AT_REQUEST_KEY}, {CMIF_AT_REPLY_KEY}, {CMIF_QMI_REQUEST_KEY}, {CMIF_QMI_REPLY_KEY}};

// The last id that this process got for the key: a queue may be removed and made again.
void note(key_t key, int id)
{
    for (KnownQueue &queue : known)
        if (queue.key == key)
            queue.id = id;
}

// A queue that this process did not look up, but has from its parent, is looked up by its id.
std::optional<Queue> find_queue(int id)
{
    for (const KnownQueue &queue : known)
        if (queue.id == id)
            return queue_of(queue.key);
    const int error = errno;
    msqid_ds found{};
    const bool exists = msgctl(id, IPC_STAT, &found) == 0;
    errno = error;
    return exists ? queue_of(found.msg_perm.__key) : std::nullopt;
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
    const std::optional<Queue> queue = find_queue(id);
    const ssize_t received = real(id, bytes, size, type, flags);
    if (queue && received >= 0)
        recording->add(*queue, Action::received,
                       record_at(bytes, static_cast<std::size_t>(received)));
    return received;
}

int look_up(key_t key, int flags)
{
    using Get = int (*)(key_t, int);
    static const auto real = next<Get>("msgget");
    const int id = real(key, flags);
    if (id >= 0)
        note(key, id);
    return id;
}

// The line is written first, so that it precedes all that the receiver does. A daemon may try again
// and again while a queue is full: only its first attempt is told, and the one that succeeds.
int send(int id, const void *bytes, std::size_t size, int flags)
{
    using Send = int (*)(int, const void *, std::size_t, int);
    static const auto real = next<Send>("msgsnd");
    thread_local int full_queue = -1;
    Recording *const recording = current.load();
    if (!recording)
        return real(id, bytes, size, flags);
    const std::optional<Queue> queue = find_queue(id);
    if (!queue)
        return real(id, bytes, size, flags);
    const bool first = full_queue != id;
    if (first)
        recording->add(*queue, Action::sent, record_at(bytes, size));
    const int result = real(id, bytes, size, flags);
    if (first && result != 0)
        recording->add_failure();
    if (!first && result == 0)
        recording->add(*queue, Action::sent, record_at(bytes, size));
    full_queue = result != 0 && errno == EAGAIN ? id : -1;
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

extern "C" int msgget(key_t key, int msgflg)
{
    return cmif_record::look_up(key, msgflg);
}

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
