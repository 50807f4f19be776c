#include "modem.h"

#include "daemons/publish/connection_keys.h"
#include "daemons/publish/message_keys.h"
#include "daemons/publish/provider_file.h"
#include "daemons/publish/status_keys.h"

#include <cerrno>
#include <sys/timerfd.h>
#include <system_error>
#include <unistd.h>

namespace sim
{
namespace
{

using namespace std::chrono_literals;

constexpr auto session_time = 4s;
constexpr auto signal_time = 2s;
constexpr auto shortest_signal_time =
    100ms; // at a pace of 0, too, the signal leaves time for others

std::optional<Clock::time_point> earlier(std::optional<Clock::time_point> one,
                                         std::optional<Clock::time_point> other)
{
    if (!one || !other)
        return one ? one : other;
    return std::min(*one, *other);
}

} // namespace

SimStatus ModemState::sim_status() const
{
    if (sim.pin1.dead())
        return SimStatus::bad;
    if (sim.pin1.blocked())
        return SimStatus::puk;
    if (!sim.pin1.open())
        return SimStatus::pin;
    return lock.shuts_out(SimCard::home_network) ? SimStatus::network_locked : SimStatus::ready;
}

RetCode ModemState::refusal(Needs needs) const
{
    if (needs == Needs::nothing)
        return ret_ok;
    const SimStatus status = sim_status();
    if (status == SimStatus::bad)
        return ret_sim_failure;
    if (status == SimStatus::puk)
        return ret_sim_puk_required;
    if (status == SimStatus::pin)
        return ret_sim_pin_required;
    if (needs == Needs::open_sim)
        return ret_ok;
    if (status == SimStatus::network_locked)
        return ret_network_pin_required;
    if (!online())
        return ret_not_allowed;
    if (needs == Needs::network && !network.serving())
        return ret_no_network_service;
    return ret_ok;
}

RetCode ModemState::data_refusal() const
{
    const RetCode code = refusal(Needs::network);
    return code == ret_ok && !packet_domain ? ret_not_allowed : code;
}

PdpProfile ModemState::pdp() const
{
    if (!connection.connected())
        return profiles.published();
    const ConnectionProfile &profile = connection.profile();
    return {std::string(pdp_types.at(static_cast<std::size_t>(profile.pdp))), profile.apn};
}

void ModemState::factory_reset()
{
    connection = Connection(pace_);
    network = Network(pace_, SimCard::home_network);
    messages = Messages();
    profiles = Profiles();
    operator_format = OperatorFormat::long_name;
    packet_domain = true;
    functionality = 1;
    time_zone = 0;
    search_result = ret_ok;
    last_apn.clear();
    session_end_.reset();
    sim.power_cycle();
}

RetCode ModemState::set_functionality(std::string_view level)
{
    if (level != "0" && level != "1" && level != "4")
        return ret_incorrect_parameters;
    functionality = level[0] - '0';
    return ret_ok;
}

RetCode ModemState::start_device_management(Clock::time_point now)
{
    if (session_end_)
        return ret_not_allowed;
    session_end_ = now + pace_.of(session_time);
    return ret_ok;
}

Clock::duration ModemState::signal_period() const
{
    return std::max<Clock::duration>(pace_.of(signal_time), shortest_signal_time);
}

// Without a network the signal stands still and a device-management session breaks off.
void ModemState::update(Clock::time_point now)
{
    network.update(refusal(Needs::radio) == ret_ok, now);
    connection.update(data_refusal(), now);
    if (!network.serving()) {
        next_signal_.reset();
        session_end_.reset();
        return;
    }
    if (next_signal_ && now >= *next_signal_)
        signal.step();
    if (!next_signal_ || now >= *next_signal_)
        next_signal_ = now + signal_period();
    if (session_end_ && now >= *session_end_) {
        session_end_.reset();
        profiles.provision();
    }
    last_apn = connection.last_apn().empty() ? profiles.published().apn : connection.last_apn();
}

std::optional<Clock::time_point> ModemState::due() const
{
    return earlier(earlier(network.due(), connection.due()), earlier(next_signal_, session_end_));
}

Modem::Modem(Pace pace, unsigned seed)
    : state_(pace, seed), timer_fd_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK))
{
    if (timer_fd_ < 0)
        throw std::system_error(errno, std::generic_category(), "timerfd_create");
    const std::lock_guard lock(mutex_);
    state_.connection.modify(stored_profile(), Clock::now());
    prepare_wait_times();
    publish_messages({});
    remove_provider_file();
    settle();
}

Modem::~Modem()
{
    close(timer_fd_);
}

void Modem::carry_on()
{
    std::uint64_t expirations = 0;
    if (read(timer_fd_, &expirations, sizeof expirations) < 0)
        return; // not yet
    const std::lock_guard lock(mutex_);
    settle();
}

void Modem::settle()
{
    state_.update(Clock::now());
    publish_connection(state_);
    publish_status(state_);
    arm_timer();
}

// The steady clock is the one that the timer runs by.
void Modem::arm_timer()
{
    itimerspec alarm{};
    if (const auto due = state_.due()) {
        const auto nanoseconds =
            std::chrono::duration_cast<std::chrono::nanoseconds>(due->time_since_epoch()).count();
        alarm.it_value.tv_sec = static_cast<time_t>(nanoseconds / 1'000'000'000);
        alarm.it_value.tv_nsec = static_cast<long>(nanoseconds % 1'000'000'000);
    }
    timerfd_settime(timer_fd_, TFD_TIMER_ABSTIME, &alarm, nullptr);
}

} // namespace sim
