#include "status_keys.h"

#include "modems/simulated/modem.h"
#include "publish_value.h"

namespace sim
{
namespace
{

using State = const ModemState &;

struct KeyRow {
    const char *key;
    std::string (*value)(State);
};

// Values of the serving cell and the last one; "" without one.
template <auto member>
std::string of_cell(const Cell *cell)
{
    return cell ? std::string(cell->*member) : std::string();
}
template <auto member>
std::string serving(State state)
{
    return of_cell<member>(state.network.serving());
}
template <auto member>
std::string last(State state)
{
    return of_cell<member>(state.network.last());
}

// Measurements; those of LTE alone are "" elsewhere.
template <auto measure>
std::string level(State state)
{
    const Cell *cell = state.network.serving();
    return cell ? std::to_string((state.signal.*measure)(*cell)) : std::string();
}
template <auto measure>
std::string lte_level(State state)
{
    const Cell *cell = state.network.serving();
    return cell && cell->technology == eutran ? level<measure>(state) : std::string();
}

bool is_open(State state)
{
    return state.sim.pin1.open();
}

std::string number(int value)
{
    return std::to_string(value);
}

std::string sim_status(State state)
{
    switch (state.sim_status()) {
    case SimStatus::pin:
        return "SIM PIN";
    case SimStatus::puk:
        return "SIM PUK";
    case SimStatus::network_locked:
        return "PH-NET PIN";
    case SimStatus::bad:
        return "SIM FAILURE";
    case SimStatus::ready:
        break;
    }
    return "READY";
}

std::string plmn(State state)
{
    const Cell *cell = state.network.serving();
    return cell ? cell->numeric() : std::string();
}

std::string operator_name(State state)
{
    switch (state.operator_format) {
    case OperatorFormat::short_name:
        return serving<&Cell::short_name>(state);
    case OperatorFormat::numeric:
        return plmn(state);
    case OperatorFormat::long_name:
        break;
    }
    return serving<&Cell::long_name>(state);
}

std::string technology(State state)
{
    const Cell *cell = state.network.serving();
    return cell ? number(cell->technology) : std::string();
}

std::string technology_name(State state)
{
    const Cell *cell = state.network.serving();
    if (!cell)
        return "";
    return cell->technology == eutran ? "LTE" : (cell->technology == utran ? "UMTS" : "GSM");
}

std::string duplex(State state)
{
    const Cell *cell = state.network.serving();
    return cell && cell->technology == eutran ? "FDD" : "";
}

constexpr KeyRow rows[] = {
    {"lte_module_hw_ver", [](State) -> std::string { return ModemState::hardware; }},
    {"lte_module_sw_ver", [](State) -> std::string { return ModemState::firmware; }},
    {"lte_mobile_imei", [](State) -> std::string { return ModemState::imei; }},

    {"lte_sim_pin_mode", [](State s) { return number(s.sim.pin1.enabled()); }},
    {"lte_mobile_iccid", [](State) -> std::string { return SimCard::iccid; }},
    {"lte_mobile_imsi", [](State s) -> std::string { return is_open(s) ? SimCard::imsi : ""; }},
    {"lte_subscriber_num_number",
     [](State s) -> std::string { return is_open(s) ? SimCard::subscriber_number : ""; }},
    {"lte_mobile_pin1c", [](State s) { return number(s.sim.pin1.tries()); }},
    {"lte_mobile_puk1c", [](State s) { return number(s.sim.pin1.puk_tries()); }},
    {"lte_mobile_pin2c", [](State s) { return number(s.sim.pin2.tries()); }},
    {"lte_mobile_puk2c", [](State s) { return number(s.sim.pin2.puk_tries()); }},

    {"lte_network_reg_status_lac", serving<&Cell::lac>},
    {"lte_network_reg_status_last_lac", last<&Cell::lac>},
    {"lte_query_network_mcc", serving<&Cell::mcc>},
    {"lte_query_network_last_mcc", last<&Cell::mcc>},
    {"lte_query_network_mnc", serving<&Cell::mnc>},
    {"lte_query_network_last_mnc", last<&Cell::mnc>},
    {"lte_query_network_cellid", serving<&Cell::cell_id>},
    {"lte_query_network_last_cellid", last<&Cell::cell_id>},
    {"lte_query_network_info_band", serving<&Cell::band>},
    {"lte_query_network_info_channel", serving<&Cell::channel>},
    {"lte_query_network_info_access_technology_select", technology_name},
    {"lte_query_network_duplexmode", duplex},

    {"lte_query_network_rssi", level<&SignalLevel::rssi>},
    {"lte_mobile_rssi_id_to_dbm", level<&SignalLevel::indexed_rssi>},
    {"lte_query_network_rsrp", lte_level<&SignalLevel::rsrp>},
    {"lte_query_network_rsrq", lte_level<&SignalLevel::rsrq>},
    {"lte_query_network_sinr", lte_level<&SignalLevel::sinr>},

    {"lte_operator_select_operator", operator_name},
    {"lte_operator_select_operator_longname", serving<&Cell::long_name>},
    {"lte_operator_select_operator_shortname", serving<&Cell::short_name>},
    {"lte_operator_select_operator_plmnname", plmn},
    {"lte_operator_select_ats_value", technology},
    {"lte_operator_select_network_mode", [](State s) { return number(!s.network.automatic()); }},
    {"lte_network_search_mode",
     [](State s) { return number(static_cast<int>(s.network.search_mode())); }},
    {"lte_roam_servive_config",
     [](State s) { return number(static_cast<int>(s.network.roaming())); }},
    {"lte_pocket_domain_servive_status", [](State s) { return number(s.packet_domain); }},

    // Last: who waits for these finds all that belongs to them.
    {"lte_network_reg_status_state",
     [](State s) { return number(static_cast<int>(s.network.registration())); }},
    {"lte_sim_status", sim_status},
};

} // namespace

void publish_status(const ModemState &state)
{
    for (const KeyRow &row : rows)
        publish_value(row.key, row.value(state));
}

} // namespace sim
