#include "queue_pair.h"

#include "require.h"

#include <csignal>
#include <cstring>
#include <limits>
#include <sys/msg.h>
#include <utility>

namespace
{
constexpr long stop = std::numeric_limits<long>::max();

// The records of this file: the platform's long, then the payload.
std::string record_of(const Message &message)
{
    std::string record(sizeof message.type, '\0');
    memcpy(record.data(), &message.type, sizeof message.type);
    return record + message.payload;
}
} // namespace

QueuePair::QueuePair(key_t requests, key_t replies, size_t payload)
    : requests_(require(calls::real_msgget(requests, IPC_CREAT | 0666), "request queue")),
      replies_(require(calls::real_msgget(replies, IPC_CREAT | 0666), "reply queue")),
      payload_(payload)
{
}

QueuePair::~QueuePair()
{
    remove(requests_);
    remove(replies_);
}

void QueuePair::reply(long type, const std::string &payload) const
{
    const std::string record = record_of({type, payload});
    require(calls::real_msgsnd(replies_, record.data(), payload.size(), 0), "reply");
}

Message QueuePair::wait_for_request() const
{
    const std::optional<Message> request = take(requests_, 0);
    return request ? *request : Message{};
}

std::optional<Message> QueuePair::take(int queue) const
{
    return take(queue, IPC_NOWAIT);
}

std::optional<Message> QueuePair::take(int queue, int flags) const
{
    std::string record(sizeof(long) + payload_, '\0');
    const ssize_t size = calls::real_msgrcv(queue, record.data(), payload_, 0, flags);
    if (size < 0)
        return std::nullopt;
    Message message;
    memcpy(&message.type, record.data(), sizeof message.type);
    message.payload = record.substr(sizeof message.type, static_cast<size_t>(size));
    return message;
}

void QueuePair::remove(int queue)
{
    (void)msgctl(queue, IPC_RMID, nullptr);
}

ScriptedDaemon::ScriptedDaemon(const QueuePair &queues, Script script)
    : queues_(queues), script_(std::move(script)), thread_([this] { serve(); })
{
}

ScriptedDaemon::~ScriptedDaemon()
{
    const std::string record = record_of({stop, ""});
    (void)calls::real_msgsnd(queues_.requests(), record.data(), 0, 0);
    thread_.join();
}

std::vector<Message> ScriptedDaemon::requests()
{
    const std::lock_guard lock(mutex_);
    return requests_;
}

void ScriptedDaemon::serve()
{
    sigset_t all; // signals of a test are for its main thread
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
    while (const std::optional<Message> request = queues_.take(queues_.requests(), 0)) {
        if (request->type == stop)
            return;
        {
            const std::lock_guard lock(mutex_);
            requests_.push_back(*request);
        }
        script_(*request);
    }
}

bool queue_exists(key_t key)
{
    return calls::real_msgget(key, 0) >= 0;
}

unsigned queue_mode(key_t key)
{
    msqid_ds status{};
    require(msgctl(calls::real_msgget(key, 0), IPC_STAT, &status), "queue status");
    return status.msg_perm.mode & 0777U;
}
