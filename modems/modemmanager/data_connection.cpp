#include "data_connection.h"

#include <utility>

namespace modem_manager
{

DataConnection::DataConnection(Actions actions)
    : actions_(std::move(actions)), thread_([this] { run(); })
{
}

DataConnection::~DataConnection()
{
    stop();
    thread_.join();
}

void DataConnection::stop()
{
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    wanted_condition_.notify_all();
}

bool DataConnection::busy() const
{
    const std::lock_guard lock(mutex_);
    return working_ || wanted_ != Want::nothing;
}

bool DataConnection::superseded() const
{
    const std::lock_guard lock(mutex_);
    return wanted_ != Want::nothing;
}

// A dial that is in progress has lost its purpose, unless the same is wanted once more.
void DataConnection::want(Want what)
{
    bool abort = false;
    {
        const std::lock_guard lock(mutex_);
        wanted_ = what;
        abort = working_ && what != Want::up;
    }
    wanted_condition_.notify_all();
    if (abort)
        actions_.abort();
}

void DataConnection::run()
{
    std::unique_lock lock(mutex_);
    for (;;) {
        wanted_condition_.wait(lock, [this] { return stopped_ || wanted_ != Want::nothing; });
        if (stopped_)
            return;
        const Want now = std::exchange(wanted_, Want::nothing);
        working_ = true;
        lock.unlock();
        if (now != Want::up)
            actions_.hang_up();
        if (now != Want::down)
            actions_.dial();
        lock.lock();
        working_ = false;
        lock.unlock();
        actions_.done();
        lock.lock();
    }
}

} // namespace modem_manager
