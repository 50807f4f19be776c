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

// What must be there before something makes sense.
enum class Needs { nothing, unlocked_sim, radio, network };

// Everything about the modem at one moment. Not for two threads: `Modem` holds the lock.
class ModemState
{
public:
    ModemState(TimeScale scale, unsigned seed)
        : network(scale, SimCard::home_network), signal(seed), connection(scale), scale_(scale)
    {
    }

    static constexpr const char *hardware = "CMIF-SIM LTE R1";
    static constexpr const char *firmware = "SIMFW_01.02.03";
    static constexpr const char *imei = "001010012345672";

    SimStatus sim_status() const;
    bool online() const { return functionality == 1; }
    CmeError refusal(Needs needs) const; // ok when they are met

    // Why there can be no data connection now, or ok.
    CmeError data_refusal() const;
    bool attached() const { return network.serving() && packet_domain; }

    // The PDP context in use: that of the connection, or the one to register with.
    PdpProfile pdp() const;

    // Everything back to the default modem, and a power cycle of the card. What the card keeps (its
    // PIN, PIN mode and counters) and the personalization lock are not settings and stay.
    void factory_reset();

    CmeError set_functionality(int level);
    CmeError start_device_management(Clock::time_point now);

    // A search takes its time; the result is search_running until then.
    CmeError begin_search(Clock::time_point now);
    bool searching() const { return search_end_.has_value(); }

    // Both change `listed`.
    void list_messages();
    CmeError delete_messages(int index, DeleteFlag flag);

    // Brings everything up to date with `now`; called after each change, and at the deadline.
    void update(Clock::time_point now);
    std::optional<Clock::time_point> next_deadline() const;

    SimCard sim;
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
    void update_signal(Clock::time_point now);

    TimeScale scale_;
    std::optional<Clock::time_point> next_signal_;
    std::optional<Clock::time_point> session_end_; // of device management
    std::optional<Clock::time_point> search_end_;
};

} // namespace simulated

#endif
