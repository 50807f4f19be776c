#include "connection.h"

#include <algorithm>
#include <charconv>

namespace sim
{

using namespace std::chrono_literals;

namespace
{

constexpr auto connecting_time = 2s;
constexpr auto disconnecting_time = 1s;
constexpr auto reconnecting_time = disconnecting_time + connecting_time;

std::string hexadecimal(unsigned number)
{
    char digits[8];
    const auto result = std::to_chars(digits, digits + sizeof digits, number, 16);
    return {digits, result.ptr};
}

} // namespace

RetCode Connection::start(RetCode refusal, Clock::time_point now)
{
    starts_itself_ = false;
    last_error_ = refusal == ret_ok && profile_.apn.empty() ? ret_missing_apn : refusal;
    if (last_error_ == ret_ok && !wanted_)
        head_for(true, connecting_time, now);
    return last_error_;
}

void Connection::stop(Clock::time_point now)
{
    starts_itself_ = false;
    last_error_ = ret_ok;
    if (wanted_)
        head_for(false, disconnecting_time, now);
}

void Connection::modify(ConnectionProfile profile, Clock::time_point now)
{
    profile_ = std::move(profile);
    if (!wanted_)
        return;
    if (!profile_.apn.empty())
        return head_for(true, reconnecting_time, now);
    stop(now);
    last_error_ = ret_missing_apn;
}

void Connection::head_for(bool up, std::chrono::milliseconds time, Clock::time_point now)
{
    wanted_ = up;
    state_ = ConnectionState::on_the_way;
    uptime_ = 0s;
    arrival_ = now + pace_.of(time);
}

void Connection::update(RetCode refusal, Clock::time_point now)
{
    if (refusal != ret_ok)
        return break_off(refusal);
    if (starts_itself_)
        start(refusal, now);
    if (state_ == ConnectionState::on_the_way && now >= arrival_)
        arrive();
    if (connected())
        uptime_ = std::chrono::floor<std::chrono::seconds>(now - arrival_);
}

void Connection::arrive()
{
    state_ = wanted_ ? ConnectionState::connected : ConnectionState::disconnected;
    if (!wanted_)
        return;
    ++number_;
    last_apn_ = profile_.apn;
}

// One that was to end anyway ends without an error.
void Connection::break_off(RetCode reason)
{
    if (wanted_)
        last_error_ = reason;
    wanted_ = false;
    state_ = ConnectionState::disconnected;
    uptime_ = 0s;
}

std::optional<Clock::time_point> Connection::due() const
{
    if (state_ == ConnectionState::on_the_way)
        return arrival_;
    if (connected())
        return arrival_ + uptime_ + 1s;
    return std::nullopt;
}

std::string Connection::ipv4_address() const
{
    constexpr unsigned first = 10, count = 200;
    if (!connected() || !profile_.has_ipv4())
        return "";
    return "192.0.2." + std::to_string(first + (number_ - 1) % count);
}

std::string Connection::ipv6_address() const
{
    if (!connected() || !profile_.has_ipv6())
        return "";
    return "2001:db8:0:" + hexadecimal(number_ & 0xffff) + "::1";
}

} // namespace sim
