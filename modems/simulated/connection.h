// The data connection: its profile, its state, its addresses and how long it is up.
#ifndef MODEMS_SIMULATED_CONNECTION_H
#define MODEMS_SIMULATED_CONNECTION_H

#include "daemons/ret_code.h"
#include "time_scale.h"

#include <optional>
#include <string>

namespace sim
{

// Numbers as in the record `qmi_profile`.
struct ConnectionProfile {
    std::string apn, user, password;
    int auth = 0;   // none, PAP, CHAP, PAP or CHAP
    int pdp = 0;    // IPv4, PPP, IPv6, IPv4v6
    int family = 0; // IPv4, IPv6

    bool has_ipv4() const { return pdp != 2; }
    bool has_ipv6() const { return pdp >= 2; }
};

enum class ConnectionState { disconnected = 1, on_the_way = 2, connected = 3 };

class Connection
{
public:
    explicit Connection(Pace pace) : pace_(pace) {}

    // `refusal` is why there can be no connection now, or ret_ok. What it says, or that the profile
    // has no access point name, is the answer and the error from then on.
    RetCode start(RetCode refusal, Clock::time_point now);
    void stop(Clock::time_point now);

    // A connection that is up, or comes up, is made anew with the new profile.
    void modify(ConnectionProfile profile, Clock::time_point now);

    // Starts by itself as soon as a connection is possible, once.
    void start_when_possible() { starts_itself_ = true; }

    // After each change of the modem, and when `due` has come. A `refusal` ends the connection.
    void update(RetCode refusal, Clock::time_point now);
    std::optional<Clock::time_point> due() const;

    const ConnectionProfile &profile() const { return profile_; }
    ConnectionState state() const { return state_; }
    bool connected() const { return state_ == ConnectionState::connected; }
    std::chrono::seconds uptime() const { return uptime_; } // at the last update
    RetCode last_error() const { return last_error_; }
    const std::string &last_apn() const { return last_apn_; } // of the last one that came up

    // From the ranges that are reserved for documentation; "" unless connected.
    std::string ipv4_address() const;
    std::string ipv6_address() const;

private:
    void head_for(bool up, std::chrono::milliseconds time, Clock::time_point now);
    void arrive();
    void break_off(RetCode reason);

    Pace pace_;
    ConnectionProfile profile_;
    ConnectionState state_ = ConnectionState::disconnected;
    bool wanted_ = false;         // up, or on the way up
    Clock::time_point arrival_{}; // when it gets, or got, to where it heads for
    std::chrono::seconds uptime_{};
    unsigned number_ = 0; // of connections so far; each has other addresses
    RetCode last_error_ = ret_ok;
    std::string last_apn_;
    bool starts_itself_ = false;
};

} // namespace sim

#endif
