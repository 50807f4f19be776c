#include "real_clock.h"

namespace scenario
{

RealClock::RealClock(TimeScale scale) : Clock(scale), thread_([this] { run(); }) {}

RealClock::~RealClock()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        changed_.notify_all();
    }
    thread_.join();
}

void RealClock::run()
{
    std::unique_lock lock(mutex_);
    while (!ending_) {
        Alarm *const next = earliest();
        if (!next) {
            changed_.wait(lock);
            continue;
        }
        const Time time = *next->time_; // the alarm may go while this thread waits
        if (now() < time)
            changed_.wait_until(lock, time);
        else
            ring(lock, *next);
    }
}

} // namespace scenario
