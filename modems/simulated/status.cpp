#include "status.h"

namespace simulated
{
namespace
{

using daemons::ModemStatus;

daemons::Cell identity_of(const Cell &cell)
{
    return {std::string(cell.mcc), std::string(cell.mnc), std::string(cell.lac),
            std::string(cell.cell_id)};
}

void add_sim(const ModemState &state, ModemStatus &status)
{
    const Pin &pin1 = state.sim.pin1, &pin2 = state.sim.pin2;
    status.sim = state.sim_status();
    if (status.sim == SimStatus::absent || status.sim == SimStatus::not_ready)
        return;
    status.pin_enabled = pin1.enabled();
    status.attempts = {pin1.attempts(), pin1.puk_attempts(), pin2.attempts(), pin2.puk_attempts()};
    status.iccid = state.sim.identity.iccid;
    if (!pin1.unlocked())
        return;
    status.imsi = state.sim.identity.imsi;
    status.subscriber_number = state.sim.identity.subscriber_number;
}

void add_serving_cell(const ModemState &state, const Cell &cell, ModemStatus &status)
{
    status.cell = identity_of(cell);
    status.operator_long = cell.long_name;
    status.operator_short = cell.short_name;
    status.technology = cell.technology;
    status.band = cell.band;
    status.channel = cell.channel;
    status.signal.rssi = state.signal.rssi(cell);
    status.signal.csq_rssi = state.signal.csq_rssi(cell);
    if (cell.technology != Technology::eutran)
        return;
    status.duplex = "FDD";
    status.signal.rsrp = state.signal.rsrp(cell);
    status.signal.rsrq = state.signal.rsrq(cell);
    status.signal.sinr = state.signal.sinr(cell);
}

void add_network(const ModemState &state, ModemStatus &status)
{
    const Network &network = state.network;
    if (network.serving())
        add_serving_cell(state, *network.serving(), status);
    if (network.last())
        status.last_cell = identity_of(*network.last());
    status.registration = network.registration();
    status.manual_selection = !network.automatic();
    status.search_mode = network.search_mode();
    status.roaming = network.roaming();
    status.packet_domain = state.packet_domain;
    status.packet_attached = state.attached();
}

void add_connection(const ModemState &state, ModemStatus &status)
{
    const Connection &connection = state.connection;
    const PdpProfile pdp = state.pdp();
    status.connection = connection.state();
    status.uptime = connection.uptime().count();
    status.ipv4_address = connection.ipv4_address();
    status.ipv6_address = connection.ipv6_address();
    status.pdp_type = pdp.type;
    status.pdp_apn = pdp.apn;
}

} // namespace

// Of a modem that is down, only what the daemons themselves have set or listed is known.
ModemStatus status_of(const ModemState &state)
{
    ModemStatus status;
    status.messages = state.listed;
    status.search = state.search_result;
    status.data_profile = state.connection.profile();
    status.last_error = state.connection.last_error();
    status.last_apn = state.last_apn;
    if (state.down())
        return status;
    status.hardware = ModemState::hardware;
    status.firmware = ModemState::firmware;
    status.imei = ModemState::imei;
    add_sim(state, status);
    add_network(state, status);
    add_connection(state, status);
    return status;
}

} // namespace simulated
