#include "code_lock.h"

#include "failure.h"
#include "json.h"
#include "process.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <sys/ipc.h>
#include <sys/sem.h>

namespace client
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr key_t lock_key = 0x434d4946; // "CMIF"
constexpr int slice_ms = 50;

int semaphores()
{
    return semget(lock_key, max_slots, IPC_CREAT | 0666);
}

std::optional<pid_t> holder_of(int set, int slot)
{
    if (semctl(set, slot, GETVAL) <= 0)
        return std::nullopt;
    return semctl(set, slot, GETPID);
}

} // namespace

CodeLock::CodeLock(const std::vector<RequestCode> &codes, double seconds,
                   const std::function<void()> &pause)
    : set_(semaphores())
{
    for (const RequestCode &request : codes)
        if (const auto slot = slot_of(request))
            slots_.push_back(*slot);
    if (slots_.empty())
        return;
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    while (!try_lock(slice_ms)) {
        pause();
        if (seconds > 0 && Clock::now() >= end)
            fail(seconds);
    }
}

CodeLock::~CodeLock()
{
    std::vector<sembuf> steps;
    for (const int slot : slots_)
        steps.push_back({static_cast<unsigned short>(slot), -1, IPC_NOWAIT | SEM_UNDO});
    if (!steps.empty())
        semop(set_, steps.data(), steps.size());
}

bool CodeLock::holds(RequestCode request) const
{
    const auto slot = slot_of(request);
    return slot && std::find(slots_.begin(), slots_.end(), *slot) != slots_.end();
}

// A fresh semaphore is 0, which means free: creating the set needs no second step that could be
// missed. All are taken in one operation, so that callers can't block each other in turn.
bool CodeLock::try_lock(int milliseconds)
{
    std::vector<sembuf> steps;
    for (const int slot : slots_) {
        const auto number = static_cast<unsigned short>(slot);
        steps.push_back({number, 0, 0});
        steps.push_back({number, 1, SEM_UNDO});
    }
    const timespec limit{0, milliseconds * 1'000'000L};
    if (semtimedop(set_, steps.data(), steps.size(), &limit) == 0)
        return true;
    if (errno == EAGAIN || errno == EINTR)
        return false;
    const int reason = errno;
    set_ = semaphores(); // another process has removed it: make it again
    if (set_ == -1 || (reason != EIDRM && reason != EINVAL))
        throw Failure(Exit::other,
                      std::string("the lock among callers can't be used: ") +
                          std::strerror(set_ == -1 ? errno : reason),
                      "'ipcs -s' shows the system's semaphores and their owners.");
    return false;
}

void CodeLock::fail(double seconds) const
{
    std::optional<pid_t> holder;
    for (const int slot : slots_)
        if (!holder)
            holder = holder_of(set_, slot);
    throw Failure(Exit::no_answer,
                  "another call of the same request" +
                      (holder ? ", made by " + process_name(*holder) + "," : "") +
                      " did not end within " + seconds_text(seconds) + "; nothing was sent",
                  "Try again when it has ended, or wait longer with --timeout SECONDS.",
                  {{"holder", holder.value_or(0) > 0 ? Json(*holder) : Json()}});
}

WithdrawalLock::WithdrawalLock(Channel channel)
    : set_(semaphores()), slot_(static_cast<unsigned short>(slot_of(channel)))
{
    sembuf steps[]{{slot_, 0, 0}, {slot_, 1, SEM_UNDO}};
    constexpr timespec limit{1, 0};
    held_ = semtimedop(set_, steps, 2, &limit) == 0;
}

WithdrawalLock::~WithdrawalLock()
{
    sembuf step{slot_, -1, IPC_NOWAIT | SEM_UNDO};
    if (held_)
        semop(set_, &step, 1);
}

std::optional<pid_t> lock_process(RequestCode request)
{
    const int set = semget(lock_key, 0, 0);
    const auto slot = slot_of(request);
    return set == -1 || !slot ? std::nullopt : holder_of(set, *slot);
}

} // namespace client
