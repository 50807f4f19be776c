#include "clock.h"

#include <algorithm>

namespace scenario
{

void Clock::begin_work(unsigned threads)
{
    const std::lock_guard lock(mutex_);
    working_ += threads;
}

void Clock::end_work()
{
    const std::lock_guard lock(mutex_);
    --working_;
    changed_.notify_all();
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
