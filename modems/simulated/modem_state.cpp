#include "modem_state.h"

#include <algorithm>

namespace simulated
{
namespace
{

using namespace std::chrono_literals;

constexpr auto session_time = 4s;
constexpr auto search_time = 5s;
constexpr auto signal_time = 2s;
constexpr auto min_signal_time = 100ms; // with a time scale of 0, too, other threads get their turn

using Deadline = std::optional<Time>;

bool has_come(const Deadline &deadline, Time now)
{
    return deadline && now >= *deadline;
}

} // namespace

SimStatus ModemState::sim_status() const
{
    if (!sim_inserted_)
        return SimStatus::absent;
    if (sim_failed_ || sim_ready_at_)
        return SimStatus::not_ready;
    if (sim.pin1.permanently_blocked())
        return SimStatus::permanently_blocked;
    if (sim.pin1.puk_required())
        return SimStatus::puk_required;
    if (!sim.pin1.unlocked())
        return SimStatus::pin_required;
    return lock.rejects(sim.identity.home_network) ? SimStatus::network_locked : SimStatus::ready;
}

CmeError ModemState::refusal(Needs needs) const
{
    if (down())
        return CmeError::no_connection_to_phone;
    if (needs == Needs::nothing)
        return CmeError::ok;
    const SimStatus status = sim_status();
    if (status == SimStatus::absent)
        return CmeError::sim_not_inserted;
    if (status == SimStatus::not_ready)
        return sim_failed_ ? CmeError::sim_failure : CmeError::sim_busy;
    if (needs == Needs::sim)
        return CmeError::ok;
    if (status == SimStatus::permanently_blocked)
        return CmeError::sim_failure;
    if (status == SimStatus::puk_required)
        return CmeError::sim_puk_required;
    if (status == SimStatus::pin_required)
        return CmeError::sim_pin_required;
    if (needs == Needs::unlocked_sim)
        return CmeError::ok;
    if (status == SimStatus::network_locked)
        return CmeError::network_pin_required;
    if (!online())
        return CmeError::not_allowed;
    if (needs == Needs::network && network.denied())
        return CmeError::network_not_allowed;
    if (needs == Needs::network && !network.serving())
        return CmeError::no_network_service;
    return CmeError::ok;
}

CmeError ModemState::data_refusal() const
{
    const CmeError error = refusal(Needs::network);
    return error == CmeError::ok && !packet_domain ? CmeError::not_allowed : error;
}

PdpProfile ModemState::pdp() const
{
    if (!connection.connected())
        return profiles.published();
    return {connection.profile().pdp_type, connection.profile().apn};
}

void ModemState::factory_reset()
{
    connection = Connection(scale_);
    network.reset_settings();
    messages = Messages();
    profiles = Profiles();
    listed.clear();
    packet_domain = true;
    functionality = 1;
    time_zone = 0;
    last_apn.clear();
    session_end_.reset();
    if (!searching())
        search_result = CmeError::ok;
    sim.power_cycle();
}

CmeError ModemState::set_functionality(int level)
{
    if (level != 0 && level != 1 && level != 4)
        return CmeError::incorrect_parameters;
    functionality = level;
    return CmeError::ok;
}

CmeError ModemState::start_device_management(Time now)
{
    if (session_end_)
        return CmeError::not_allowed;
    session_end_ = now + scale_.scaled(session_time);
    return CmeError::ok;
}

// A second search joins the one that runs. One without the radio has failed.
CmeError ModemState::begin_search(Time now)
{
    if (searching())
        return CmeError::ok;
    search_result = refusal(Needs::radio);
    if (search_result != CmeError::ok)
        return search_result;
    search_end_ = now + scale_.scaled(search_time);
    search_result = CmeError::search_running;
    return CmeError::ok;
}

// The listing shows which messages are new; from then on they count as read.
void ModemState::list_messages()
{
    listed = messages.all();
    messages.mark_all_read();
}

CmeError ModemState::delete_messages(int index, DeleteFlag flag)
{
    const CmeError error = messages.remove(index, flag);
    listed = messages.all();
    return error;
}

// The SIM or the radio may have gone during a search: then there is nothing to list. Without a
// network the signal stays as it is and a device-management session ends without a result.
void ModemState::update(Time now)
{
    if (!power_on_)
        power_on_ = now;
    for (Deadline *deadline : {&down_until_, &sim_ready_at_})
        if (has_come(*deadline, now))
            deadline->reset();
    network.update(refusal(Needs::radio) == CmeError::ok, now);
    connection.update(data_refusal(), now);
    if (has_come(search_end_, now)) {
        search_end_.reset();
        search_result = refusal(Needs::radio);
    }
    if (!network.serving()) {
        next_signal_.reset();
        session_end_.reset();
        return;
    }
    update_signal(now);
    messages.deliver();
    if (has_come(session_end_, now)) {
        session_end_.reset();
        profiles.provision();
    }
    last_apn = connection.last_apn().empty() ? profiles.published().apn : connection.last_apn();
}

void ModemState::update_signal(Time now)
{
    if (next_signal_ && now < *next_signal_)
        return;
    if (next_signal_)
        signal.step();
    next_signal_ = now + std::max<Duration>(scale_.scaled(signal_time), min_signal_time);
}

std::optional<Time> ModemState::next_deadline() const
{
    Deadline earliest;
    for (const Deadline &each : {network.next_deadline(), connection.next_deadline(), next_signal_,
                                 session_end_, search_end_, down_until_, sim_ready_at_})
        if (each && (!earliest || *each < *earliest))
            earliest = each;
    return earliest;
}

} // namespace simulated
