#include "sent_record.h"

#include "call_end.h"
#include "failure.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <dlfcn.h>
#include <sys/mman.h>
#include <sys/msg.h>
#include <unistd.h>
#include <utility>

namespace client
{
namespace
{

// Of the child that runs a call; a process runs one at a time.
SentRecord *watched = nullptr;
std::vector<RequestCode> watched_requests;
Unanswered *replies_due = nullptr;

// Null for a type that the call doesn't use.
const RequestCode *watched_request(long type)
{
    for (const RequestCode &request : watched_requests)
        if (request.code == type)
            return &request;
    return nullptr;
}

template <class Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

SentRecord::SentRecord()
{
    void *memory =
        mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw Failure(Exit::other, "no memory for the call", "Close some programs.");
    madvise(memory, sizeof(Shared), MADV_DONTDUMP); // it may hold a PIN
    shared_ = static_cast<Shared *>(memory);
    shared_->state = State::not_sent;
}

SentRecord::~SentRecord()
{
    munmap(shared_, sizeof(Shared));
}

void SentRecord::watch(std::vector<RequestCode> requests, Unanswered *unanswered)
{
    watched = this;
    shared_->sender = getpid();
    watched_requests = std::move(requests);
    replies_due = unanswered;
}

struct Hooks {
    using State = SentRecord::State;
    using Send = int (*)(int, const void *, std::size_t, int);
    using Receive = ssize_t (*)(int, void *, std::size_t, long, int);

    // While the queue is full the record is tried again and again rather than waiting in the
    // kernel: a caller that is killed there leaves no count of a reply that will never come.
    static int send(int queue, const void *record, std::size_t size, int flags)
    {
        static const auto real = next<Send>("msgsnd");
        long type = 0;
        std::memcpy(&type, record, sizeof type);
        const RequestCode *request = watched_request(type);
        if (!request)
            return real(queue, record, size, flags);
        note(*request, queue, static_cast<const char *>(record) + sizeof type, size);
        constexpr timespec pause{0, 5'000'000};
        for (;;) {
            if (send_once(queue, record, size, real) == 0)
                return 0;
            if (errno != EAGAIN || (flags & IPC_NOWAIT) != 0)
                return -1;
            nanosleep(&pause, nullptr);
        }
    }

    static ssize_t receive(int queue, void *record, std::size_t size, long type, int flags)
    {
        static const auto real = next<Receive>("msgrcv");
        const RequestCode *request = watched_request(type);
        if (!request)
            return real(queue, record, size, type, flags);
        const Exchange exchange;
        const ssize_t received = real(queue, record, size, type, flags);
        if (received >= 0) {
            if (replies_due)
                replies_due->remove(*request);
            watched->shared_->state = State::answered;
        }
        return received;
    }

private:
    static void note(RequestCode request, int queue, const char *payload, std::size_t size)
    {
        SentRecord::Shared &shared = *watched->shared_;
        shared.request = request;
        shared.is_first = shared.state != State::answered;
        shared.queue = queue;
        shared.size = std::min(size, sizeof shared.payload);
        std::memcpy(shared.payload, payload, shared.size);
    }

    static int send_once(int queue, const void *record, std::size_t size, Send real)
    {
        SentRecord::Shared &shared = *watched->shared_;
        const Exchange exchange;
        if (replies_due)
            replies_due->add(shared.request);
        shared.state = State::sending;
        std::atomic_signal_fence(std::memory_order_seq_cst);
        const int result = real(queue, record, size, IPC_NOWAIT);
        const int error = errno;
        std::atomic_signal_fence(std::memory_order_seq_cst);
        shared.state = result == 0 ? State::sent : State::not_sent;
        if (result != 0 && replies_due)
            replies_due->remove(shared.request);
        errno = error;
        return result;
    }
};

} // namespace client

extern "C" int msgsnd(int msqid, const void *msgp, std::size_t msgsz, int msgflg)
{
    return client::Hooks::send(msqid, msgp, msgsz, msgflg);
}

extern "C" ssize_t msgrcv(int msqid, void *msgp, std::size_t msgsz, long msgtyp, int msgflg)
{
    return client::Hooks::receive(msqid, msgp, msgsz, msgtyp, msgflg);
}
