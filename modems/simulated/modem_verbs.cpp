// What the daemons ask of the modem: what each verb needs, and what it does.
#include "modem.h"

namespace simulated
{

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
