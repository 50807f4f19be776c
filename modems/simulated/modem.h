// The simulated modem for the daemons: the state with a lock around it, and a thread that lets time
// pass in it.
#ifndef MODEMS_SIMULATED_MODEM_H
#define MODEMS_SIMULATED_MODEM_H

#include "daemons/modem.h"
#include "modem_clock.h"
#include "modem_state.h"

#include <functional>
#include <string_view>
#include <thread>

namespace simulated
{

class Modem final : public daemons::Modem
{
public:
    Modem(TimeScale scale, unsigned seed);
    ~Modem() override;
    Modem(const Modem &) = delete;
    Modem &operator=(const Modem &) = delete;

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
    template <class Action>
    CmeError change(Needs needs, Action action);
    void advance();
    void signal_change();
    void run();

    mutable std::mutex mutex_;
    ModemClock clock_;
    ModemState state_;
    bool stopped_ = false;
    std::mutex watch_mutex_;
    std::function<void()> changed_;
    std::thread thread_;
};

} // namespace simulated

#endif
