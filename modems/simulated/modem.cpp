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
    return silent() ? last_words_ : status_of(state_);
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

// For the holder of the lock. The waiting threads look again.
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

void Modem::happen(const std::function<void(ModemState &, Time)> &action)
{
    {
        const std::lock_guard lock(mutex_);
        action(state_, clock_.now());
        advance();
    }
    signal_change();
}

void Modem::fall_silent(std::chrono::milliseconds time)
{
    const std::lock_guard lock(mutex_);
    if (!silent())
        last_words_ = status_of(state_);
    silent_until_ = clock_.now() + clock_.scale().scaled(time);
    advance();
}

void Modem::wait_while_silent(std::unique_lock<std::mutex> &lock)
{
    while (silent() && !stopped_)
        waiters_.wait(lock);
}

// Runs the action if the needs are met, and what follows from it at once; then signals.
template <class Action>
CmeError Modem::change(Needs needs, Action action)
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

// The snapshot is always up to date.
CmeError Modem::refresh(daemons::StatusPart part)
{
    using enum daemons::StatusPart;
    const bool of_sim = part == pin_counters || part == pin_mode || part == sim;
    return change(of_sim ? Needs::sim : Needs::nothing, [](ModemState &) { return CmeError::ok; });
}

CmeError Modem::enter_pin(std::string_view pin)
{
    return change(Needs::sim, [&](ModemState &state) { return state.sim.pin1.verify(pin); });
}

CmeError Modem::enter_puk(std::string_view puk, std::string_view new_pin)
{
    return change(Needs::sim,
                  [&](ModemState &state) { return state.sim.pin1.unblock(puk, new_pin); });
}

CmeError Modem::change_pin(std::string_view old_pin, std::string_view new_pin)
{
    return change(Needs::unlocked_sim,
                  [&](ModemState &state) { return state.sim.pin1.change(old_pin, new_pin); });
}

CmeError Modem::set_pin_enabled(bool enabled, std::string_view pin)
{
    return change(Needs::unlocked_sim,
                  [&](ModemState &state) { return state.sim.pin1.set_enabled(enabled, pin); });
}

CmeError Modem::lock_network(std::string_view plmn, std::string_view key)
{
    return change(Needs::unlocked_sim, [&](ModemState &state) {
        return state.lock.lock(plmn.empty() ? state.sim.identity.home_network : plmn, key);
    });
}

CmeError Modem::unlock_network(std::string_view key)
{
    return change(Needs::unlocked_sim, [&](ModemState &state) { return state.lock.unlock(key); });
}

CmeError Modem::set_search_mode(SearchMode mode)
{
    return change(Needs::nothing, [&](ModemState &state) {
        state.network.set_search_mode(mode);
        return CmeError::ok;
    });
}

CmeError Modem::select_operator(std::string_view plmn, std::optional<Technology> technology)
{
    return change(Needs::radio,
                  [&](ModemState &state) { return state.network.select(plmn, technology); });
}

CmeError Modem::select_automatically()
{
    return change(Needs::nothing, [](ModemState &state) {
        state.network.select_automatically();
        return CmeError::ok;
    });
}

CmeError Modem::search(std::vector<Operator> &found)
{
    const CmeError refusal = change(Needs::unlocked_sim, [this](ModemState &state) {
        return state.begin_search(clock_.now());
    });
    if (refusal != CmeError::ok)
        return refusal;
    std::unique_lock lock(mutex_);
    while ((state_.searching() || silent()) && !stopped_)
        waiters_.wait(lock);
    if (state_.searching())
        return CmeError::no_connection_to_phone;
    if (state_.search_result == CmeError::ok)
        found = state_.network.operators();
    return state_.search_result;
}

CmeError Modem::set_roaming(Roaming roaming)
{
    return change(Needs::nothing, [&](ModemState &state) {
        state.network.set_roaming(roaming);
        return CmeError::ok;
    });
}

CmeError Modem::set_packet_domain(bool on)
{
    return change(Needs::nothing, [&](ModemState &state) {
        state.packet_domain = on;
        return CmeError::ok;
    });
}

CmeError Modem::set_functionality(int level)
{
    return change(Needs::nothing,
                  [&](ModemState &state) { return state.set_functionality(level); });
}

CmeError Modem::set_time_zone(int quarter_hours)
{
    return change(Needs::nothing, [&](ModemState &state) {
        state.time_zone = quarter_hours;
        return CmeError::ok;
    });
}

CmeError Modem::factory_reset()
{
    return change(Needs::nothing, [](ModemState &state) {
        state.factory_reset();
        return CmeError::ok;
    });
}

CmeError Modem::list_messages()
{
    return change(Needs::unlocked_sim, [](ModemState &state) {
        state.list_messages();
        return CmeError::ok;
    });
}

CmeError Modem::delete_messages(int index, DeleteFlag flag)
{
    return change(Needs::unlocked_sim,
                  [&](ModemState &state) { return state.delete_messages(index, flag); });
}

CmeError Modem::set_profile(int number, const PdpProfile &profile)
{
    return change(Needs::nothing,
                  [&](ModemState &state) { return state.profiles.set(number, profile); });
}

CmeError Modem::synchronize_profile()
{
    return change(Needs::nothing, [](ModemState &state) {
        state.profiles.synchronize();
        return CmeError::ok;
    });
}

CmeError Modem::start_device_management()
{
    return change(Needs::network, [this](ModemState &state) {
        return state.start_device_management(clock_.now());
    });
}

CmeError Modem::set_data_profile(const DataProfile &profile)
{
    return change(Needs::nothing, [&](ModemState &state) {
        state.connection.modify(profile, clock_.now());
        return CmeError::ok;
    });
}

// What it needs, the connection itself keeps as its last error.
CmeError Modem::connect()
{
    return change(Needs::nothing, [this](ModemState &state) {
        return state.connection.start(state.data_refusal(), clock_.now());
    });
}

CmeError Modem::disconnect()
{
    return change(Needs::nothing, [this](ModemState &state) {
        state.connection.stop(clock_.now());
        return CmeError::ok;
    });
}

CmeError Modem::connect_when_possible()
{
    return change(Needs::nothing, [](ModemState &state) {
        state.connection.start_when_possible();
        return CmeError::ok;
    });
}

} // namespace simulated
