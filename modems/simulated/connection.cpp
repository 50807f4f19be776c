#include "connection.h"

#include <algorithm>
#include <charconv>

namespace simulated
{
namespace
{

using namespace std::chrono_literals;
using daemons::PdpType;

std::string hexadecimal(unsigned number)
{
    char digits[8];
    const auto result = std::to_chars(digits, digits + sizeof digits, number, 16);
    return {digits, result.ptr};
}

} // namespace

CmeError Connection::start(CmeError refusal, Time now)
{
    auto_connect_pending_ = false;
    last_error_ = refusal == CmeError::ok && profile_.apn.empty() ? CmeError::missing_apn : refusal;
    if (last_error_ == CmeError::ok && !wanted_)
        begin_transition(true, connecting_time, now);
    return last_error_;
}

void Connection::stop(Time now)
{
    auto_connect_pending_ = false;
    last_error_ = CmeError::ok;
    if (wanted_)
        begin_transition(false, disconnecting_time, now);
}

void Connection::modify(DataProfile profile, Time now)
{
    profile_ = std::move(profile);
    if (!wanted_)
        return;
    if (!profile_.apn.empty())
        return begin_transition(true, disconnecting_time + connecting_time, now);
    stop(now);
    last_error_ = CmeError::missing_apn;
}

void Connection::begin_transition(bool up, std::chrono::milliseconds time, Time now)
{
    wanted_ = up;
    state_ = ConnectionState::transitioning;
    uptime_ = 0s;
    transition_end_ = now + scale_.scaled(time);
}

void Connection::update(CmeError refusal, Time now)
{
    if (refusal != CmeError::ok)
        return drop(refusal);
    if (auto_connect_pending_)
        start(refusal, now);
    if (state_ == ConnectionState::transitioning && now >= transition_end_)
        complete_transition();
    if (connected())
        uptime_ = std::chrono::floor<std::chrono::seconds>(now - transition_end_);
}

void Connection::complete_transition()
{
    state_ = wanted_ ? ConnectionState::connected : ConnectionState::disconnected;
    if (!wanted_)
        return;
    ++count_;
    last_apn_ = profile_.apn;
}

void Connection::come_up(Time now)
{
    begin_transition(true, {}, now);
    last_error_ = CmeError::ok;
    update(CmeError::ok, now);
}

// One that was to end anyway ends without an error.
void Connection::drop(CmeError reason)
{
    if (wanted_)
        last_error_ = reason;
    wanted_ = false;
    state_ = ConnectionState::disconnected;
    uptime_ = 0s;
}

std::optional<Time> Connection::next_deadline() const
{
    if (state_ == ConnectionState::transitioning)
        return transition_end_;
    if (connected())
        return transition_end_ + uptime_ + 1s;
    return std::nullopt;
}

std::string Connection::ipv4_address() const
{
    constexpr unsigned first = 10, count = 200;
    if (!connected() || profile_.pdp_type == PdpType::ipv6)
        return "";
    return "192.0.2." + std::to_string(first + (count_ - 1) % count);
}

std::string Connection::ipv6_address() const
{
    if (!connected() || profile_.pdp_type < PdpType::ipv6)
        return "";
    return "2001:db8:0:" + hexadecimal(count_ & 0xffff) + "::1";
}

} // namespace simulated
