#include "clock.h"

#include <algorithm>

namespace scenario
{
namespace
{

thread_local bool has_turn = false;

} // namespace

void Clock::begin_work()
{
    const std::lock_guard lock(mutex_);
    ++working_;
}

void Clock::end_work()
{
    const std::lock_guard lock(mutex_);
    stop_working();
}

void Clock::stop_working()
{
    if (has_turn)
        turn_taken_ = has_turn = false;
    --working_;
    changed_.notify_all();
}

unsigned Clock::rest()
{
    const std::lock_guard lock(mutex_);
    stop_working();
    return next_worker_++;
}

void Clock::resume(const std::vector<unsigned> &workers)
{
    const std::lock_guard lock(mutex_);
    working_ += static_cast<unsigned>(workers.size());
    if (takes_turns())
        resumed_.insert(workers.begin(), workers.end());
}

// A thread before it that waits for this one would never go on: so there is a limit.
void Clock::take_turn(unsigned worker)
{
    constexpr std::chrono::seconds patience{5};
    if (!takes_turns())
        return;
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, patience,
                      [&] { return !ringing_ && !turn_taken_ && *resumed_.begin() == worker; });
    resumed_.erase(worker);
    turn_taken_ = has_turn = true;
}

Alarm *Clock::earliest() const
{
    Alarm *found = nullptr;
    for (Alarm *alarm : alarms_)
        if (alarm->time_ && (!found || *alarm->time_ < *found->time_))
            found = alarm;
    return found;
}

void Clock::ring(std::unique_lock<std::mutex> &lock, Alarm &alarm)
{
    alarm.time_.reset();
    ringing_ = &alarm;
    lock.unlock();
    alarm.rung_();
    lock.lock();
    ringing_ = nullptr;
    changed_.notify_all();
}

Alarm::Alarm(Clock &clock, std::function<void()> rung) : clock_(clock), rung_(std::move(rung))
{
    const std::lock_guard lock(clock_.mutex_);
    clock_.alarms_.push_back(this);
}

Alarm::~Alarm()
{
    std::unique_lock lock(clock_.mutex_);
    clock_.alarms_.erase(std::find(clock_.alarms_.begin(), clock_.alarms_.end(), this));
    clock_.changed_.wait(lock, [this] { return clock_.ringing_ != this; });
}

void Alarm::set(std::optional<Time> time)
{
    const std::lock_guard lock(clock_.mutex_);
    time_ = time;
    clock_.changed_.notify_all();
}

} // namespace scenario
