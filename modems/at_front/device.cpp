#include "device.h"

namespace at_front
{

Device::Device(simulated::Modem &modem, AnswerFaults &answer_faults, std::string model)
    : modem_(modem), answer_faults_(answer_faults), model_(std::move(model))
{
    clock_set_at_ = inspect([](const ModemState &, Time now) { return now; });
    modem_.watch([this] {
        wake();
        const std::lock_guard lock(watch_mutex_);
        if (watcher_)
            watcher_();
    });
}

Device::~Device()
{
    modem_.watch({});
}

CmeError Device::change(const std::function<CmeError(ModemState &, Time)> &act)
{
    CmeError result = CmeError::ok;
    modem_.apply([&](ModemState &state, Time now) { result = act(state, now); });
    return result;
}

void Device::wake()
{
    const std::lock_guard lock(mutex_);
    ++changes_;
    changed_.notify_all();
}

void Device::stop()
{
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    changed_.notify_all();
}

void Device::watch(std::function<void()> changed)
{
    const std::lock_guard lock(watch_mutex_);
    watcher_ = std::move(changed);
}

bool Device::wait_until(const std::function<bool()> &done, scenario::Duration limit,
                        const std::function<bool()> &given_up)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    std::unique_lock lock(mutex_);
    while (!stopped_) {
        const unsigned seen = changes_;
        lock.unlock();
        if (done())
            return true;
        if (given_up())
            return false;
        lock.lock();
        const auto new_change = [&] { return stopped_ || changes_ != seen; };
        if (!changed_.wait_until(lock, end, new_change))
            return false;
    }
    return false;
}

std::optional<int> Device::active_context() const
{
    const std::lock_guard lock(mutex_);
    return active_context_;
}

void Device::set_active_context(std::optional<int> number)
{
    const std::lock_guard lock(mutex_);
    active_context_ = number;
}

Credentials Device::credentials(int context) const
{
    const std::lock_guard lock(mutex_);
    return credentials_.at(static_cast<std::size_t>(context));
}

void Device::set_credentials(int context, Credentials credentials)
{
    const std::lock_guard lock(mutex_);
    credentials_.at(static_cast<std::size_t>(context)) = std::move(credentials);
}

int Device::radio_access() const
{
    const std::lock_guard lock(mutex_);
    return radio_access_;
}

std::time_t Device::clock() const
{
    const Time now = inspect([](const ModemState &, Time at) { return at; });
    const std::lock_guard lock(mutex_);
    return clock_set_ + std::chrono::floor<std::chrono::seconds>(now - clock_set_at_).count();
}

void Device::set_clock(std::time_t local)
{
    const Time now = inspect([](const ModemState &, Time at) { return at; });
    const std::lock_guard lock(mutex_);
    clock_set_ = local;
    clock_set_at_ = now;
}

void Device::set_radio_access(int selection)
{
    const std::lock_guard lock(mutex_);
    radio_access_ = selection;
}

} // namespace at_front
