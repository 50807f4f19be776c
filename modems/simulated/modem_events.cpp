// What happens to the modem from outside: its card, its power, its messages.
#include "modem_state.h"
#include "sms_text.h"

#include <ctime>
#include <utility>

namespace simulated
{
namespace
{

using namespace std::chrono_literals;

constexpr auto sim_start_time = 1s;
constexpr const char *default_apn = "internet.example";

// As a service centre in Central Europe stamps messages: from the same moment on in each run.
std::string time_stamp(Duration since_power_on)
{
    constexpr std::time_t power_on = 1'709'726'400; // 2024-03-06 12:00:00
    const std::time_t seconds =
        power_on + std::chrono::floor<std::chrono::seconds>(since_power_on).count();
    std::tm parts{};
    char text[32];
    gmtime_r(&seconds, &parts);
    const std::string stamp(text, std::strftime(text, sizeof text, "%Y/%m/%d,%H:%M:%S+04", &parts));
    return stamp.substr(2); // the year has two digits
}

} // namespace

void ModemState::remove_sim()
{
    sim_inserted_ = false;
    sim_ready_at_.reset();
    sim.power_cycle();
}

void ModemState::insert_sim(bool other, Time now)
{
    if (other)
        std::swap(sim, spare_sim_);
    sim.power_cycle();
    network.set_home(sim.identity.home_network);
    sim_inserted_ = true;
    sim_failed_ = false;
    sim_ready_at_ = now + scale_.scaled(sim_start_time);
}

void ModemState::crash(std::chrono::milliseconds down_time, Time now)
{
    down_until_ = now + scale_.scaled(down_time);
    forget();
}

void ModemState::set_power(bool on)
{
    powered_ = on;
    if (!on)
        forget();
}

// What a power cycle forgets goes; settings and stored messages stay.
void ModemState::forget()
{
    sim.power_cycle();
    functionality = 1;
    session_end_.reset();
    if (searching())
        search_result = CmeError::no_connection_to_phone;
    search_end_.reset();
}

// Undoes whatever keeps the modem from that state. The SIM card stays the same.
void ModemState::bring_to(Preset preset, Time now)
{
    powered_ = true;
    down_until_.reset();
    sim_ready_at_.reset();
    sim_inserted_ = true;
    sim_failed_ = false;
    if (preset == Preset::locked) {
        sim.pin1.restore();
        sim.pin1.require();
        return;
    }
    sim.pin1.open();
    if (preset == Preset::unlocked)
        return;
    functionality = 1;
    if (sim_status() == SimStatus::network_locked)
        lock.release();
    network.register_now(now);
    if (preset == Preset::connected)
        come_up(now);
}

void ModemState::come_up(Time now)
{
    packet_domain = true;
    if (connection.connected())
        return;
    DataProfile profile = connection.profile();
    if (profile.apn.empty())
        profile.apn = default_apn;
    connection.modify(profile, now);
    connection.come_up(now);
}

void ModemState::receive_message(const std::string &sender, std::string_view text, Time now)
{
    for (const std::string &part : sms_parts(text))
        messages.send(sender, time_stamp(now - power_on_.value_or(now)), part);
}

} // namespace simulated
