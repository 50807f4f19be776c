#include "modem.h"

#include "status.h"

namespace simulated
{

Modem::Modem(scenario::Clock &clock, unsigned seed)
    : clock_(clock), state_(clock.scale(), seed), waiters_(clock),
      alarm_(clock, [this] { pass_time(); })
{
    const std::lock_guard lock(mutex_);
    advance();
}

daemons::ModemStatus Modem::status() const
{
    const std::lock_guard lock(mutex_);
    return silent() ? status_before_silence_ : status_of(state_);
}

void Modem::watch(std::function<void()> changed)
{
    const std::lock_guard lock(watch_mutex_);
    changed_ = std::move(changed);
}

void Modem::watch_events(std::function<void(std::string_view)> happened)
{
    const std::lock_guard lock(events_mutex_);
    happened_ = std::move(happened);
}

void Modem::stop()
{
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    alarm_.set(std::nullopt);
    waiters_.wake();
}

// Without mutex_, which the watcher's status() takes.
void Modem::signal_change()
{
    {
        const std::lock_guard lock(watch_mutex_);
        if (changed_)
            changed_();
    }
    signal_events();
}

void Modem::signal_events()
{
    std::vector<std::string_view> events;
    {
        const std::lock_guard lock(mutex_);
        events.swap(events_);
    }
    const std::lock_guard lock(events_mutex_);
    for (const std::string_view event : events)
        if (happened_)
            happened_(event);
}

// For the holder of the lock. Wakes the waiting threads.
void Modem::advance()
{
    const Time now = clock_.now();
    state_.update(now);
    if (silent_until_ && now >= *silent_until_)
        silent_until_.reset();
    const Situation after = situation_of(state_);
    for (const std::string_view event : events_between(situation_, after))
        events_.push_back(event);
    situation_ = after;
    const std::optional<Time> deadline = state_.next_deadline();
    alarm_.set(silent_until_ && (!deadline || *silent_until_ < *deadline) ? silent_until_
                                                                          : deadline);
    waiters_.wake();
}

void Modem::pass_time()
{
    {
        const std::lock_guard lock(mutex_);
        if (stopped_)
            return;
        advance();
    }
    signal_change();
}

void Modem::apply(const std::function<void(ModemState &, Time)> &action)
{
    {
        const std::lock_guard lock(mutex_);
        action(state_, clock_.now());
        advance();
    }
    signal_change();
}

void Modem::inspect(const std::function<void(const ModemState &, Time)> &reader) const
{
    const std::lock_guard lock(mutex_);
    reader(state_, clock_.now());
}

void Modem::stop_answering(std::chrono::milliseconds time)
{
    const std::lock_guard lock(mutex_);
    if (!silent())
        status_before_silence_ = status_of(state_);
    silent_until_ = clock_.now() + clock_.scale().scaled(time);
    advance();
}

void Modem::wait_while_silent(std::unique_lock<std::mutex> &lock)
{
    while (silent() && !stopped_)
        waiters_.wait(lock);
}

// Runs the action if the needs are met, and what follows from it at once; then signals.
CmeError Modem::change(Needs needs, const Action &action)
{
    CmeError error = CmeError::ok;
    {
        std::unique_lock lock(mutex_);
        wait_while_silent(lock);
        if (stopped_)
            return CmeError::no_connection_to_phone;
        error = state_.refusal(needs);
        if (error == CmeError::ok)
            error = action(state_);
        advance();
    }
    signal_change();
    return error;
}

} // namespace simulated
