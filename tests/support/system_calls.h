// Stand-ins for the system calls that the library makes: msgget, msgsnd, msgrcv, sleep, system and
// gettimeofday. They make the real call unless a test scripts another outcome; sleep only counts.
//
//     calls::script("msgget", {calls::real, calls::fails(ENOSPC)});  // the second look-up fails
//     calls::script("msgrcv", {calls::fails(EINTR), calls::fails(EIDRM)});
//     calls::before("sleep", [] { unlink(profile_busy_path); });
//
// A receive that a script replaces overwrites the type in the caller's record: after a failure it
// is not to be trusted.
//
// Each call but gettimeofday is a step of the recording, with queues named by their keys:
// "msgget(899, 01666)", "msgsnd(899, type 12, size 116, flags 0)",
// "msgrcv(900, type 12, size 116, flags 0)", "sleep(1)", "system(date > /data/debug_lte.txt)".
#ifndef TESTS_SUPPORT_SYSTEM_CALLS_H
#define TESTS_SUPPORT_SYSTEM_CALLS_H

#include <dlfcn.h>
#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

// A System V message: its type, and its payload as bytes.
struct Message {
    long type = 0;
    std::string payload;
};

namespace calls
{
// What one call does instead of the real one.
struct Outcome {
    bool real = true;
    int result = 0;
    int error = 0;
};

inline constexpr Outcome real{};

constexpr Outcome fails(int error)
{
    return {false, -1, error};
}

constexpr Outcome yields(int result)
{
    return {false, result, 0};
}

// The next calls of `function` have these outcomes, one after the other; after them it is real
// again.
void script(const std::string &function, const std::vector<Outcome> &outcomes);

// `count` times the same outcome.
std::vector<Outcome> times(size_t count, Outcome outcome);

// Runs `action` at the start of each call of `function`, in the caller's thread.
void before(const std::string &function, const std::function<void()> &action);

// How often `function` was called, failures included. Also counts gettimeofday.
int count(const std::string &function);

// What msgsnd was given, sent or not.
std::vector<Message> sent();

// From now on gettimeofday gives this time.
void set_time(time_t seconds, suseconds_t microseconds);

// A transfer as a step of the recording.
std::string transfer_step(const std::string &function, const std::string &queue, long type,
                          size_t size, int flags = 0);

// The function of this name that a stand-in replaces.
template <class Function>
Function *replaced(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

// The real ones, for the daemons' side: neither steps nor counted.
int real_msgget(key_t key, int flags);
int real_msgsnd(int queue, const void *record, size_t size, int flags);
ssize_t real_msgrcv(int queue, void *record, size_t size, long type, int flags);
} // namespace calls

#endif
