#include "system_calls.h"

#include "record.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <sys/msg.h>
#include <sys/time.h>
#include <unistd.h>

namespace
{
std::mutex mutex;
std::map<std::string, std::deque<calls::Outcome>> scripts;
std::map<std::string, std::function<void()>> actions;
std::map<std::string, int> counts;
std::map<int, key_t> queue_keys;
std::vector<Message> sent_messages;
std::optional<timeval> fixed_time;

// Counts and notes a call, and returns its outcome.
calls::Outcome begin_call(const std::string &function, const std::string &step)
{
    std::function<void()> action;
    {
        const std::lock_guard lock(mutex);
        ++counts[function];
        action = actions[function];
    }
    if (action)
        action();
    if (!step.empty())
        note_step(step);
    const std::lock_guard lock(mutex);
    std::deque<calls::Outcome> &script = scripts[function];
    if (script.empty())
        return calls::real;
    const calls::Outcome outcome = script.front();
    script.pop_front();
    return outcome;
}

int instead(calls::Outcome outcome)
{
    errno = outcome.error;
    return outcome.result;
}

std::string queue_name(int queue)
{
    const std::lock_guard lock(mutex);
    const auto found = queue_keys.find(queue);
    return found == queue_keys.end() ? "id " + std::to_string(queue)
                                     : std::to_string(found->second);
}

long type_of(const void *record)
{
    long type = 0;
    memcpy(&type, record, sizeof type);
    return type;
}
} // namespace

void calls::script(const std::string &function, const std::vector<Outcome> &outcomes)
{
    const std::lock_guard lock(mutex);
    scripts[function].assign(outcomes.begin(), outcomes.end());
}

std::vector<calls::Outcome> calls::times(size_t count, Outcome outcome)
{
    std::vector<Outcome> outcomes;
    outcomes.resize(count, outcome);
    return outcomes;
}

void calls::before(const std::string &function, const std::function<void()> &action)
{
    const std::lock_guard lock(mutex);
    actions[function] = action;
}

int calls::count(const std::string &function)
{
    const std::lock_guard lock(mutex);
    return counts[function];
}

std::vector<Message> calls::sent()
{
    const std::lock_guard lock(mutex);
    return sent_messages;
}

void calls::set_time(time_t seconds, suseconds_t microseconds)
{
    const std::lock_guard lock(mutex);
    fixed_time = timeval{seconds, microseconds};
}

std::string calls::transfer_step(const std::string &function, const std::string &queue, long type,
                                 size_t size, int flags)
{
    return function + "(" + queue + ", type " + std::to_string(type) + ", size " +
           std::to_string(size) + ", flags " + std::to_string(flags) + ")";
}

int calls::real_msgget(key_t key, int flags)
{
    static const auto function = calls::replaced<int(key_t, int)>("msgget");
    return function(key, flags);
}

int calls::real_msgsnd(int queue, const void *record, size_t size, int flags)
{
    static const auto function = calls::replaced<int(int, const void *, size_t, int)>("msgsnd");
    return function(queue, record, size, flags);
}

ssize_t calls::real_msgrcv(int queue, void *record, size_t size, long type, int flags)
{
    static const auto function = calls::replaced<ssize_t(int, void *, size_t, long, int)>("msgrcv");
    return function(queue, record, size, type, flags);
}

// Parameters have the names of the manual pages.
int msgget(key_t key, int msgflg) noexcept
{
    char step[64];
    (void)snprintf(step, sizeof step, "msgget(%d, 0%o)", key, static_cast<unsigned>(msgflg));
    const calls::Outcome outcome = begin_call("msgget", step);
    const int queue = outcome.real ? calls::real_msgget(key, msgflg) : instead(outcome);
    if (queue >= 0) {
        const std::lock_guard lock(mutex);
        queue_keys[queue] = key;
    }
    return queue;
}

int msgsnd(int msqid, const void *msgp, size_t msgsz, int msgflg)
{
    const long type = type_of(msgp);
    {
        const std::lock_guard lock(mutex);
        sent_messages.push_back({type, {static_cast<const char *>(msgp) + sizeof type, msgsz}});
    }
    const auto outcome = begin_call(
        "msgsnd", calls::transfer_step("msgsnd", queue_name(msqid), type, msgsz, msgflg));
    return outcome.real ? calls::real_msgsnd(msqid, msgp, msgsz, msgflg) : instead(outcome);
}

ssize_t msgrcv(int msqid, void *msgp, size_t msgsz, long msgtyp, int msgflg)
{
    const auto outcome = begin_call(
        "msgrcv", calls::transfer_step("msgrcv", queue_name(msqid), msgtyp, msgsz, msgflg));
    if (outcome.real)
        return calls::real_msgrcv(msqid, msgp, msgsz, msgtyp, msgflg);
    const long garbage = 0x5a5a5a;
    memcpy(msgp, &garbage, sizeof garbage);
    return instead(outcome);
}

unsigned sleep(unsigned seconds)
{
    const auto outcome = begin_call("sleep", "sleep(" + std::to_string(seconds) + ")");
    return outcome.real ? 0 : static_cast<unsigned>(outcome.result);
}

int system(const char *command)
{
    static const auto function = calls::replaced<int(const char *)>("system");
    const auto outcome = begin_call("system", std::string("system(") + command + ")");
    return outcome.real ? function(command) : instead(outcome);
}

int gettimeofday(timeval *tv, void *tz) noexcept
{
    static const auto function = calls::replaced<int(timeval *, void *)>("gettimeofday");
    const auto outcome = begin_call("gettimeofday", "");
    if (!outcome.real)
        return instead(outcome);
    const std::lock_guard lock(mutex);
    if (!fixed_time)
        return function(tv, tz);
    *tv = *fixed_time;
    return 0;
}
