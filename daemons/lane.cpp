#include "lane.h"

namespace daemons
{

Lane::Lane(Serve serve) : serve_(std::move(serve)), thread_([this] { run(); }) {}

Lane::~Lane()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    wake_up_.notify_one();
    thread_.join();
}

bool Lane::push(AtJob job)
{
    {
        const std::lock_guard lock(mutex_);
        if (jobs_.size() >= max_waiting)
            return false;
        jobs_.push_back(std::move(job));
    }
    wake_up_.notify_one();
    return true;
}

int Lane::take_all(const AtRequest &request)
{
    const std::lock_guard lock(mutex_);
    return static_cast<int>(
        std::erase_if(jobs_, [&](const AtJob &job) { return job.request == &request; }));
}

void Lane::run()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        wake_up_.wait(lock, [this] { return ending_ || !jobs_.empty(); });
        if (ending_)
            return;
        const AtJob job = std::move(jobs_.front());
        jobs_.pop_front();
        lock.unlock();
        serve_(job);
        lock.lock();
    }
}

} // namespace daemons
