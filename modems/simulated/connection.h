// The data connection: its profile, its state, its addresses and how long it is up.
#ifndef MODEMS_SIMULATED_CONNECTION_H
#define MODEMS_SIMULATED_CONNECTION_H

#include "daemons/modem_status.h"
#include "scenario/time_scale.h"

#include <optional>
#include <string>

namespace simulated
{

using daemons::CmeError;
using daemons::ConnectionState;
using daemons::DataProfile;
using scenario::Duration;
using scenario::Time;
using scenario::TimeScale;

class Connection
{
public:
    explicit Connection(TimeScale scale) : scale_(scale) {}

    // `refusal` is why there can be no connection now, or ok. It is the answer and the last error,
    // or missing_apn is when the profile has no access point name.
    CmeError start(CmeError refusal, Time now);
    void stop(Time now);

    // A connection that is up, or coming up, is made again with the new profile.
    void modify(DataProfile profile, Time now);

    // Starts once, as soon as a connection is possible.
    void start_when_possible() { auto_connect_pending_ = true; }

    // What the network does, or a test bench: the connection ends with this error, is made again,
    // or is up at once. The profile has an access point name by then.
    void drop(CmeError reason);
    void reactivate(Time now) { begin_transition(true, connecting_time, now); }
    void come_up(Time now);

    // Called after each change of the modem, and at the deadline. A `refusal` ends the connection.
    void update(CmeError refusal, Time now);
    std::optional<Time> next_deadline() const;

    const DataProfile &profile() const { return profile_; }
    ConnectionState state() const { return state_; }
    bool connected() const { return state_ == ConnectionState::connected; }
    std::chrono::seconds uptime() const { return uptime_; } // at the last update
    CmeError last_error() const { return last_error_; }
    const std::string &last_apn() const { return last_apn_; } // of the last connection that came up

    // From the ranges that are reserved for documentation; "" unless connected.
    std::string ipv4_address() const;
    std::string ipv6_address() const;

private:
    void begin_transition(bool up, std::chrono::milliseconds time, Time now);
    void complete_transition();

    static constexpr std::chrono::seconds connecting_time{2}, disconnecting_time{1};

    TimeScale scale_;
    DataProfile profile_;
    ConnectionState state_ = ConnectionState::disconnected;
    bool wanted_ = false;   // connected, or connecting
    Time transition_end_{}; // of the transition in progress, or of the last one
    std::chrono::seconds uptime_{};
    unsigned count_ = 0; // of connections so far; each has other addresses
    CmeError last_error_ = CmeError::ok;
    std::string last_apn_;
    bool auto_connect_pending_ = false;
};

} // namespace simulated

#endif
