#include "status_keys.h"

#include "publish_value.h"

namespace daemons
{
namespace
{

using Status = const ModemStatus &;

std::string text(const std::string &value)
{
    return value;
}
std::string text(std::optional<int> value)
{
    return value ? std::to_string(*value) : "";
}
std::string text(std::optional<bool> value)
{
    return value ? std::to_string(*value) : "";
}
template <class Enumeration>
std::string text(std::optional<Enumeration> value)
{
    return value ? std::to_string(static_cast<int>(*value)) : "";
}

// A member of the status, or a member of a part of it.
template <auto member>
std::string of(Status status)
{
    return text(status.*member);
}
template <auto part, auto member>
std::string of(Status status)
{
    return text(status.*part.*member);
}

std::string plmn(Status status)
{
    return status.cell.mcc + status.cell.mnc;
}

std::string technology_name(Status status)
{
    if (!status.technology)
        return "";
    switch (*status.technology) {
    case Technology::gsm:
    case Technology::gsm_compact:
    case Technology::gsm_egprs:
        return "GSM";
    case Technology::eutran:
        return "LTE";
    default:
        return "UMTS";
    }
}

std::string sim_status(Status status)
{
    if (!status.sim)
        return "";
    switch (*status.sim) {
    case SimStatus::absent:
        return "NOT INSERTED";
    case SimStatus::not_ready:
        return "NOT READY";
    case SimStatus::pin_required:
        return "SIM PIN";
    case SimStatus::puk_required:
        return "SIM PUK";
    case SimStatus::network_locked:
        return "PH-NET PIN";
    case SimStatus::permanently_blocked:
        return "SIM FAILURE";
    case SimStatus::ready:
        break;
    }
    return "READY";
}

std::string operator_name(Status status, OperatorFormat format)
{
    switch (format) {
    case OperatorFormat::short_name:
        return status.operator_short;
    case OperatorFormat::numeric:
        return plmn(status);
    case OperatorFormat::long_name:
        break;
    }
    return status.operator_long;
}

struct KeyRow {
    const char *key;
    std::string (*value)(Status);
};

using M = ModemStatus;

// clang-format off
constexpr KeyRow rows[] = {
    {"lte_module_hw_ver",                       of<&M::hardware>},
    {"lte_module_sw_ver",                       of<&M::firmware>},
    {"lte_mobile_imei",                         of<&M::imei>},

    {"lte_sim_pin_mode",                        of<&M::pin_enabled>},
    {"lte_mobile_iccid",                        of<&M::iccid>},
    {"lte_mobile_imsi",                         of<&M::imsi>},
    {"lte_subscriber_num_number",               of<&M::subscriber_number>},
    {"lte_mobile_pin1c",                        of<&M::attempts, &RetryCounters::pin1>},
    {"lte_mobile_puk1c",                        of<&M::attempts, &RetryCounters::puk1>},
    {"lte_mobile_pin2c",                        of<&M::attempts, &RetryCounters::pin2>},
    {"lte_mobile_puk2c",                        of<&M::attempts, &RetryCounters::puk2>},

    {"lte_network_reg_status_lac",              of<&M::cell, &Cell::lac>},
    {"lte_network_reg_status_last_lac",         of<&M::last_cell, &Cell::lac>},
    {"lte_query_network_mcc",                   of<&M::cell, &Cell::mcc>},
    {"lte_query_network_last_mcc",              of<&M::last_cell, &Cell::mcc>},
    {"lte_query_network_mnc",                   of<&M::cell, &Cell::mnc>},
    {"lte_query_network_last_mnc",              of<&M::last_cell, &Cell::mnc>},
    {"lte_query_network_cellid",                of<&M::cell, &Cell::cell_id>},
    {"lte_query_network_last_cellid",           of<&M::last_cell, &Cell::cell_id>},
    {"lte_query_network_info_band",             of<&M::band>},
    {"lte_query_network_info_channel",          of<&M::channel>},
    {"lte_query_network_info_access_technology_select", technology_name},
    {"lte_query_network_duplexmode",            of<&M::duplex>},

    {"lte_query_network_rssi",                  of<&M::signal, &SignalStatus::rssi>},
    {"lte_mobile_rssi_id_to_dbm",               of<&M::signal, &SignalStatus::csq_rssi>},
    {"lte_query_network_rsrp",                  of<&M::signal, &SignalStatus::rsrp>},
    {"lte_query_network_rsrq",                  of<&M::signal, &SignalStatus::rsrq>},
    {"lte_query_network_sinr",                  of<&M::signal, &SignalStatus::sinr>},

    {"lte_operator_select_operator_longname",   of<&M::operator_long>},
    {"lte_operator_select_operator_shortname",  of<&M::operator_short>},
    {"lte_operator_select_operator_plmnname",   plmn},
    {"lte_operator_select_ats_value",           of<&M::technology>},
    {"lte_operator_select_network_mode",        of<&M::manual_selection>},
    {"lte_network_search_mode",                 of<&M::search_mode>},
    {"lte_roam_servive_config",                 of<&M::roaming>},
    {"lte_pocket_domain_servive_status",        of<&M::packet_domain>},

    // Published last: a reader that waits for these keys sees a consistent set.
    {"lte_network_reg_status_state",            of<&M::registration>},
    {"lte_sim_status",                          sim_status},
};
// clang-format on

} // namespace

void publish_status(const ModemStatus &status, OperatorFormat format)
{
    publish_value("lte_operator_select_operator", operator_name(status, format));
    for (const KeyRow &row : rows)
        publish_value(row.key, row.value(status));
}

} // namespace daemons
