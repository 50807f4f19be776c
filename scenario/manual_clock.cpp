#include "manual_clock.h"

#include <algorithm>
#include <exception>

namespace scenario
{

Time ManualClock::now() const
{
    const std::lock_guard lock(mutex_);
    return now_;
}

bool ManualClock::wait_for_idle(std::unique_lock<std::mutex> &lock, Duration patience)
{
    return changed_.wait_for(lock, patience, [this] { return working_ == 0; });
}

void ManualClock::move_to(Time time)
{
    now_ = time;
    if (moved_)
        moved_(time);
}

bool ManualClock::advance(Duration time, Duration patience)
{
    const std::lock_guard one_at_a_time(advancing_);
    std::unique_lock lock(mutex_);
    const Time end = now_ + time;
    bool idle = wait_for_idle(lock, patience);
    for (Alarm *next = earliest(); next && *next->time_ <= end; next = earliest()) {
        move_to(std::max(now_, *next->time_));
        ring(lock, *next);
        // A thread that does not end its work is waited for once.
        idle = idle && wait_for_idle(lock, patience);
    }
    move_to(end);
    return idle;
}

void ManualClock::perform(const std::function<void()> &action)
{
    std::exception_ptr error;
    Alarm alarm(*this, [&] {
        try {
            action();
        } catch (...) {
            error = std::current_exception();
        }
    });
    alarm.set(now());
    advance({});
    if (error)
        std::rethrow_exception(error);
}

} // namespace scenario
