// One caller at a time for each request code, among the programs that use this library.
//
// A reply carries its request code and nothing else, so two callers that wait for one code take
// each other's replies. The lock is a semaphore for each code, in the queues' own IPC namespace.
// The kernel releases it when its holder ends, however that happens.
#ifndef CLIENT_CODE_LOCK_H
#define CLIENT_CODE_LOCK_H

#include "channel.h"

#include <functional>
#include <optional>
#include <vector>

namespace client
{

class CodeLock
{
public:
    // Takes the locks of all these codes together, waiting up to `seconds` (0: no limit). Throws a
    // Failure that names the holder when time is up. `pause` runs about every 50 ms meanwhile and
    // may throw.
    CodeLock(const std::vector<RequestCode> &codes, double seconds,
             const std::function<void()> &pause);
    ~CodeLock();
    CodeLock(const CodeLock &) = delete;
    CodeLock &operator=(const CodeLock &) = delete;

    bool holds(RequestCode request) const;

private:
    bool try_lock(int milliseconds);
    [[noreturn]] void fail(double seconds) const;

    int set_ = -1;
    std::vector<int> slots_;
};

// One withdrawal at a time from the request queue of a channel: a withdrawal notes which process
// read the queue last, which is wrong when another one comes between. Never waits long: when the
// holder does not finish (it was stopped), the withdrawal goes on without the lock.
class WithdrawalLock
{
public:
    explicit WithdrawalLock(Channel channel);
    ~WithdrawalLock();
    WithdrawalLock(const WithdrawalLock &) = delete;
    WithdrawalLock &operator=(const WithdrawalLock &) = delete;

private:
    int set_;
    unsigned short slot_;
    bool held_;
};

// The process that holds the lock of a code; nothing when it is free. 0 for a process of another
// PID namespace.
std::optional<pid_t> lock_process(RequestCode request);

} // namespace client

#endif
