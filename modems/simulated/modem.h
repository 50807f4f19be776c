// The simulated modem: what it consists of, what holds between its parts, and one lock around it.
#ifndef MODEMS_SIMULATED_MODEM_H
#define MODEMS_SIMULATED_MODEM_H

#include "connection.h"
#include "messages.h"
#include "network.h"
#include "network_lock.h"
#include "profiles.h"
#include "signal_level.h"
#include "sim_card.h"

#include <mutex>
#include <utility>

namespace sim
{

enum class OperatorFormat { long_name = 0, short_name = 1, numeric = 2 };
enum class SimStatus { ready, pin, puk, network_locked, bad };

// What a request needs of the modem before it makes sense.
enum class Needs { nothing, open_sim, radio, network };

// Everything about the modem at one moment. Not for two threads: `Modem` holds the lock.
class ModemState
{
public:
    ModemState(Pace pace, unsigned seed)
        : network(pace, SimCard::home_network), signal(seed), connection(pace), pace_(pace)
    {
    }

    static constexpr const char *hardware = "CMIF-SIM LTE R1";
    static constexpr const char *firmware = "SIMFW_01.02.03";
    static constexpr const char *imei = "001010012345672";

    SimStatus sim_status() const;
    bool online() const { return functionality == 1; }
    RetCode refusal(Needs needs) const; // ret_ok when they are met

    // Why there can be no data connection now, or ret_ok.
    RetCode data_refusal() const;
    bool attached() const { return network.serving() && packet_domain; }

    // The PDP context in use: that of the connection, or the one to register with.
    PdpProfile pdp() const;

    // Everything back to the default modem, and a power cycle of the card. What the card keeps (its
    // PIN, PIN mode and counters) and the personalization lock are no settings and stay.
    void factory_reset();

    RetCode set_functionality(std::string_view level);
    RetCode start_device_management(Clock::time_point now);

    // Carries on what takes time; after each change too. Then, the next moment to do so.
    void update(Clock::time_point now);
    std::optional<Clock::time_point> due() const;

    SimCard sim;
    NetworkLock lock;
    Network network;
    SignalLevel signal;
    Connection connection;
    Messages messages;
    Profiles profiles;
    OperatorFormat operator_format = OperatorFormat::long_name;
    bool packet_domain = true;
    int functionality = 1; // 3GPP TS 27.007 <fun>
    int time_zone = 0;     // quarters of an hour east of UTC
    RetCode search_result = ret_ok;
    std::string last_apn;

private:
    Clock::duration signal_period() const;

    Pace pace_;
    std::optional<Clock::time_point> next_signal_;
    std::optional<Clock::time_point> session_end_;
};

// The one modem of a router. Every change goes through here: it is followed by whatever it entails
// and published before the lock is released.
class Modem
{
public:
    Modem(Pace pace, unsigned seed);
    ~Modem();
    Modem(const Modem &) = delete;
    Modem &operator=(const Modem &) = delete;

    // Runs `action` on the state, alone, and returns what it returns. The configuration store is
    // for the holder of this lock, too.
    template <class Action>
    auto change(Action &&action)
    {
        const std::lock_guard lock(mutex_);
        auto result = std::forward<Action>(action)(state_);
        settle();
        return result;
    }

    // Readable when the time has come to call `carry_on`.
    int timer_fd() const { return timer_fd_; }
    void carry_on();

private:
    void settle();
    void arm_timer();

    std::mutex mutex_;
    ModemState state_;
    int timer_fd_;
};

} // namespace sim

#endif
