#include "worker.h"

namespace modem_manager
{

Worker::Worker(std::function<std::optional<Time>()> look)
    : look_(std::move(look)), thread_([this] { run(); })
{
}

Worker::~Worker()
{
    stop();
    thread_.join();
}

void Worker::wake()
{
    {
        const std::lock_guard lock(mutex_);
        woken_ = true;
    }
    woken_condition_.notify_one();
}

void Worker::stop()
{
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    woken_condition_.notify_one();
}

void Worker::run()
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
        next = look_();
        lock.lock();
    }
}

} // namespace modem_manager
