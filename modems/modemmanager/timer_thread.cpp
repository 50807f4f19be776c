#include "timer_thread.h"

namespace modem_manager
{

TimerThread::TimerThread(std::function<std::optional<Time>()> task)
    : task_(std::move(task)), thread_([this] { run(); })
{
}

TimerThread::~TimerThread()
{
    stop();
    thread_.join();
}

void TimerThread::wake()
{
    {
        const std::lock_guard lock(mutex_);
        woken_ = true;
    }
    woken_condition_.notify_one();
}

void TimerThread::stop()
{
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    woken_condition_.notify_one();
}

void TimerThread::run()
{
    const auto due = [this] { return woken_ || stopped_; };
    std::optional<Time> next;
    std::unique_lock lock(mutex_);
    for (;;) {
        if (next)
            woken_condition_.wait_until(lock, *next, due);
        else
            woken_condition_.wait(lock, due);
        if (stopped_)
            return;
        woken_ = false;
        lock.unlock();
        next = task_();
        lock.lock();
    }
}

} // namespace modem_manager
