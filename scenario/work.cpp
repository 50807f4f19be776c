#include "work.h"

#include <utility>

namespace scenario
{
namespace
{

thread_local bool working = false;

} // namespace

Work::Work(Clock &clock) : clock_(working ? nullptr : &clock)
{
    if (clock_)
        clock_->begin_work();
    working = true;
}

Work::Work(Clock &clock, Begun) : clock_(&clock)
{
    working = true;
}

Work::~Work()
{
    if (!clock_)
        return;
    working = false;
    clock_->end_work();
}

bool Work::in_this_thread()
{
    return working;
}

void Waiters::wait(std::unique_lock<std::mutex> &lock)
{
    const auto woken = [this, before = wakes_] { return wakes_ != before; };
    if (!Work::in_this_thread())
        return woken_.wait(lock, woken);
    const unsigned worker = clock_.rest();
    workers_.push_back(worker);
    woken_.wait(lock, woken);
    lock.unlock(); // what goes before it may need the lock
    clock_.take_turn(worker);
    lock.lock();
}

void Waiters::wake()
{
    clock_.resume(std::exchange(workers_, {}));
    ++wakes_;
    woken_.notify_all();
}

bool Pause::wait_for(Duration time)
{
    bool over = false;
    Alarm alarm(clock_, [&] {
        const std::lock_guard lock(mutex_);
        over = true;
        waiters_.wake();
    });
    std::unique_lock lock(mutex_);
    if (called_off_)
        return false;
    alarm.set(clock_.now() + time);
    while (!over && !called_off_)
        waiters_.wait(lock);
    return !called_off_;
}

void Pause::call_off()
{
    const std::lock_guard lock(mutex_);
    called_off_ = true;
    waiters_.wake();
}

} // namespace scenario
