// The simulated modem for the daemons: the state with a lock around it, and an alarm that lets time
// pass in it.
#ifndef MODEMS_SIMULATED_MODEM_H
#define MODEMS_SIMULATED_MODEM_H

#include "daemons/modem.h"
#include "modem_state.h"
#include "scenario/work.h"
#include "situation.h"

#include <functional>
#include <mutex>
#include <string_view>

namespace simulated
{

class Modem final : public daemons::Modem
{
public:
    Modem(scenario::Clock &clock, unsigned seed);
    ~Modem() override { stop(); }
    Modem(const Modem &) = delete;
    Modem &operator=(const Modem &) = delete;

    // Changes the state from outside, as a test bench does. What the action throws is passed on.
    void apply(const std::function<void(ModemState &state, Time now)> &action);

    scenario::TimeScale scale() const { return clock_.scale(); }

    // Reads the state, which `reader` must not keep. Nothing is signalled.
    void inspect(const std::function<void(const ModemState &state, Time now)> &reader) const;

    // For this time no verb is answered and status() doesn't change.
    void stop_answering(std::chrono::milliseconds time);

    // `happened` is called with the name of each event (situation.h), after the change was
    // signalled and from its thread. It may call everything, also apply(), but not this. An empty
    // function ends that; when watch_events() returns, the previous function is not running.
    void watch_events(std::function<void(std::string_view event)> happened);

    daemons::ModemStatus status() const override;
    CmeError refresh(daemons::StatusPart part) override;
    void watch(std::function<void()> changed) override;
    void stop() override;

    CmeError enter_pin(std::string_view pin) override;
    CmeError enter_puk(std::string_view puk, std::string_view new_pin) override;
    CmeError change_pin(std::string_view old_pin, std::string_view new_pin) override;
    CmeError set_pin_enabled(bool enabled, std::string_view pin) override;
    CmeError lock_network(std::string_view plmn, std::string_view key) override;
    CmeError unlock_network(std::string_view key) override;
    CmeError set_search_mode(SearchMode mode) override;
    CmeError select_operator(std::string_view plmn, std::optional<Technology> technology) override;
    CmeError select_automatically() override;
    CmeError search(std::vector<Operator> &found) override;
    CmeError set_roaming(Roaming roaming) override;
    CmeError set_packet_domain(bool on) override;
    CmeError set_functionality(int level) override;
    CmeError set_time_zone(int quarter_hours) override;
    CmeError factory_reset() override;
    CmeError list_messages() override;
    CmeError delete_messages(int index, DeleteFlag flag) override;
    CmeError set_profile(int number, const PdpProfile &profile) override;
    CmeError synchronize_profile() override;
    CmeError start_device_management() override;
    CmeError set_data_profile(const DataProfile &profile) override;
    CmeError connect() override;
    CmeError disconnect() override;
    CmeError connect_when_possible() override;

private:
    using Action = std::function<CmeError(ModemState &)>;

    CmeError change(Needs needs, const Action &action);
    void advance();
    void signal_change();
    void signal_events();
    void pass_time();
    void wait_while_silent(std::unique_lock<std::mutex> &lock);
    bool silent() const { return silent_until_.has_value(); }

    scenario::Clock &clock_;
    mutable std::mutex mutex_; // of all below, up to the alarm
    ModemState state_;
    Situation situation_; // at the last change
    std::vector<std::string_view> events_;
    std::optional<Time> silent_until_;
    daemons::ModemStatus status_before_silence_;
    bool stopped_ = false;
    scenario::Waiters waiters_;
    std::mutex watch_mutex_;
    std::function<void()> changed_;
    std::recursive_mutex events_mutex_; // one event's action may lead to the next event
    std::function<void(std::string_view)> happened_;
    scenario::Alarm alarm_; // destroyed first
};

} // namespace simulated

#endif
