// Threads that work and wait by a clock: a ManualClock goes on only when none of them works.
#ifndef SCENARIO_WORK_H
#define SCENARIO_WORK_H

#include "clock.h"

namespace scenario
{

// Counts the calling thread as working while the object exists; within another one it adds nothing.
class Work
{
public:
    explicit Work(Clock &clock);

    // For a thread for which another one has called begin_work() already.
    enum class Begun {};
    Work(Clock &clock, Begun);

    ~Work();
    Work(const Work &) = delete;
    Work &operator=(const Work &) = delete;

    static bool in_this_thread();

private:
    Clock *clock_; // none when the thread was counted before
};

// Threads that wait for what other threads or time bring. They are not at work until they are
// woken, and from that moment on they are: no clock goes on in between.
class Waiters
{
public:
    explicit Waiters(Clock &clock) : clock_(clock) {}

    // Waits until the next wake(). Both are called with the same mutex locked.
    void wait(std::unique_lock<std::mutex> &lock);
    void wake();

private:
    Clock &clock_;
    std::condition_variable woken_;
    unsigned wakes_ = 0;
    std::vector<unsigned> workers_; // that wait
};

// A wait for a time to pass, of any number of threads, which can be called off.
class Pause
{
public:
    explicit Pause(Clock &clock) : clock_(clock), waiters_(clock) {}

    // False when it was called off, before or during the wait. `time` is not scaled here.
    bool wait_for(Duration time);
    void call_off(); // this wait and all later ones

private:
    Clock &clock_;
    std::mutex mutex_;
    Waiters waiters_;
    bool called_off_ = false;
};

} // namespace scenario

#endif
