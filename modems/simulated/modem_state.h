// The simulated modem: its parts, and the rules that tie them together.
#ifndef MODEMS_SIMULATED_MODEM_STATE_H
#define MODEMS_SIMULATED_MODEM_STATE_H

#include "connection.h"
#include "messages.h"
#include "network.h"
#include "network_lock.h"
#include "profiles.h"
#include "signal_level.h"
#include "sim_card.h"

namespace simulated
{

using daemons::SimStatus;

// Prerequisites of a verb.
enum class Needs { nothing, sim, unlocked_sim, radio, network };

// States to which a test bench can bring the modem at once.
enum class Preset { locked, unlocked, registered, connected };

// Everything about the modem at one moment. Not for two threads: `Modem` holds the lock.
class ModemState
{
public:
    ModemState(TimeScale scale, unsigned seed)
        : network(scale, first_sim.home_network), signal(seed), connection(scale), scale_(scale)
    {
    }

    static constexpr const char *hardware = "CMIF-SIM LTE R1";
    static constexpr const char *firmware = "SIMFW_01.02.03";
    static constexpr const char *imei = "001010012345672";

    bool down() const { return !powered_ || down_until_; } // nothing of the modem answers
    SimStatus sim_status() const;
    bool online() const { return functionality == 1; }
    CmeError refusal(Needs needs) const; // ok when they are met

    // Why there can be no data connection now, or ok.
    CmeError data_refusal() const;
    bool attached() const { return network.serving() && packet_domain; }

    // The PDP context in use: that of the connection, or the one to register with.
    PdpProfile pdp() const;

    // What happens to the modem from outside (modem_events.cpp).
    void remove_sim();
    bool has_working_sim() const { return sim_inserted_ && !sim_failed_; }
    void insert_sim(bool other, Time now); // the card that was in before, or the other one
    void fail_sim() { sim_failed_ = true; }
    void crash(std::chrono::milliseconds down_time, Time now);
    void set_power(bool on);
    void bring_to(Preset preset, Time now);
    void receive_message(const std::string &sender, std::string_view text, Time now);

    // Everything back to the default modem, and a power cycle of the card. What the card keeps (its
    // PIN, PIN mode and counters) and the personalization lock are not settings and stay.
    void factory_reset();

    CmeError set_functionality(int level);
    CmeError start_device_management(Time now);

    // A search takes its time; the result is search_running until then.
    CmeError begin_search(Time now);
    bool searching() const { return search_end_.has_value(); }

    // Both change `listed`.
    void list_messages();
    CmeError delete_messages(int index, DeleteFlag flag);

    // Brings everything up to date with `now`; called after each change, and at the deadline.
    void update(Time now);
    std::optional<Time> next_deadline() const;

    SimCard sim; // that is in, or was last
    NetworkLock lock;
    Network network;
    SignalLevel signal;
    Connection connection;
    Messages messages;
    Profiles profiles;
    std::vector<Message> listed; // as the last listing or deletion showed them
    bool packet_domain = true;
    int functionality = 1; // 3GPP TS 27.007 <fun>
    int time_zone = 0;     // quarters of an hour east of UTC
    CmeError search_result = CmeError::ok;
    std::string last_apn;

private:
    void forget();
    void update_signal(Time now);
    void come_up(Time now);

    TimeScale scale_;
    SimCard spare_sim_ = {.identity = other_sim};
    bool sim_inserted_ = true, sim_failed_ = false;
    std::optional<Time> sim_ready_at_; // while a card starts
    std::optional<Time> power_on_;     // the first update
    bool powered_ = true;
    std::optional<Time> down_until_;
    std::optional<Time> next_signal_;
    std::optional<Time> session_end_; // of device management
    std::optional<Time> search_end_;
};

} // namespace simulated

#endif
