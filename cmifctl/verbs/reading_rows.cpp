#include "reading_rows.h"

#include "cmif/cmif.h"

#include <cstdio>

namespace cmifctl
{
namespace
{

using enum Form;

constexpr std::monostate as_stored{};

int connection_uptime(char *out)
{
    unsigned int uptime = 0;
    const int result = shared_CMIF_get_connection_uptime(&uptime);
    std::snprintf(out, 16, "%u", uptime);
    return result;
}

// The library numbers the technologies without gaps.
int technology(int *out)
{
    constexpr int numbers[]{0, 2, 3, 4, 5, 6, 7, 100};
    const int before = *out;
    const int result = shared_CMIF_get_OperatorSelectAct(out);
    if (result == CMIF_OK && *out != before)
        *out = numbers[*out];
    return result;
}

// clang-format off
const Reading rows[] = {
    //section      key                stored                                    getter                                      form     unit   table
    {"modem",      "hardware",        "lte_module_hw_ver",                      shared_CMIF_get_mobileHWVersion},
    {"modem",      "firmware",        "lte_module_sw_ver",                      shared_CMIF_get_mobileFWVersion},
    {"modem",      "imei",            "lte_mobile_imei",                        shared_CMIF_get_mobileIMEI},

    {"sim",        "state",           "lte_sim_status",                         shared_CMIF_get_mobileSimStatus,            code,    "",    enums::sim_state},
    {"sim",        "imsi",            "lte_mobile_imsi",                        shared_CMIF_get_mobileIMSI},
    {"sim",        "iccid",           "lte_mobile_iccid",                       shared_CMIF_get_mobileSimICCID},
    {"sim",        "number",          "lte_subscriber_num_number",              shared_CMIF_get_SubscriberNumber},

    // The library's getter tells neither roaming nor a denied registration.
    {"network",    "registration",    "lte_network_reg_status_state",           as_stored,                                  code,    "",    enums::registration},
    {"network",    "selection",       "lte_operator_select_network_mode",       shared_CMIF_GetNetworkMode,                 code,    "",    enums::selection},
    {"network",    "operator",        "lte_operator_select_operator",           shared_CMIF_get_mobileNetworkOperatorName},
    {"network",    "operator_long",   "lte_operator_select_operator_longname",  shared_CMIF_GetOperatorLongName},
    {"network",    "operator_short",  "lte_operator_select_operator_shortname", shared_CMIF_GetOperatorShortName},
    {"network",    "operator_code",   "lte_operator_select_operator_plmnname",  shared_CMIF_GetOperatorPlmnName},
    {"network",    "technology",      "lte_operator_select_ats_value",          technology,                                 code,    "",    enums::technology},
    {"network",    "mcc",             "lte_query_network_mcc",                  shared_CMIF_get_mobileNetworkMCC},
    {"network",    "mnc",             "lte_query_network_mnc",                  shared_CMIF_get_mobileNetworkMNC},
    {"network",    "mnc_digits",      "lte_query_network_mnc",                  shared_CMIF_get_mobileNetworkMNCFormat,     number},
    {"network",    "lac",             "lte_network_reg_status_lac",             shared_CMIF_get_mobileNetworkLAC},
    {"network",    "cell_id",         "lte_query_network_cellid",               shared_CMIF_get_mobileNetworkCellID},

    {"last_known", "mcc",             "lte_query_network_last_mcc",             shared_CMIF_get_mobileLastKnownMCC},
    {"last_known", "mnc",             "lte_query_network_last_mnc",             shared_CMIF_get_mobileLastKnownMNC},
    {"last_known", "lac",             "lte_network_reg_status_last_lac",        shared_CMIF_get_mobileLastKnownLAC},
    {"last_known", "cell_id",         "lte_query_network_last_cellid",          shared_CMIF_get_mobileLastKnownCellID},
    {"last_known", "context_apn",     "lte_pdp_last_apn",                       shared_CMIF_get_mobileLastKnownAPN},

    {"radio",      "search_mode",     "lte_network_search_mode",                shared_CMIF_get_mobileNetworkMode,          code,    "",    enums::search_mode},
    {"radio",      "band_region",     "lte_network_search_mode",                shared_CMIF_GetBandRegion,                  code,    "",    enums::band_region},
    {"radio",      "roaming",         "lte_roam_servive_config",                shared_CMIF_get_mobileInternationalRoam,    code,    "",    enums::roaming},
    {"radio",      "access",          "lte_query_network_info_access_technology_select", shared_CMIF_get_mobileACtiveNetwork},
    {"radio",      "access_mode",     "lte_query_network_info_access_technology_select", shared_CMIF_get_mobile4gMode},
    {"radio",      "band",            "lte_query_network_info_band",            shared_CMIF_get_mobileRadioBand},
    {"radio",      "channel",         "lte_query_network_info_channel",         shared_CMIF_get_mobileChannelNumber,        number},
    {"radio",      "rssi",            "lte_query_network_rssi",                 shared_CMIF_get_mobileRSSI,                 number,  "dBm"},
    {"radio",      "rssi_3g",         "lte_mobile_rssi_id_to_dbm",              shared_CMIF_get_mobile_3G_RSSI,             number,  "dBm"},
    {"radio",      "rsrp",            "lte_query_network_rsrp",                 shared_CMIF_get_mobileRSRP,                 number,  "dBm"},
    {"radio",      "rsrq",            "lte_query_network_rsrq",                 shared_CMIF_get_mobileRSRQ,                 number,  "dB"},
    {"radio",      "sinr",            "lte_query_network_sinr",                 shared_CMIF_get_mobileRSSINR,               number,  "dB"},

    {"data",       "state",           "lte_qmi_connection_status",              shared_CMIF_get_connection_status,          code,    "",    enums::connection},
    {"data",       "uptime",          "lte_qmi_connection_uptime",              connection_uptime,                          seconds, "s"},
    {"data",       "last_error",      "lte_qmi_last_error"},
    {"data",       "ipv4",            "lte_ipv4_address",                       shared_CMIF_get_mobileIPv4_string},
    {"data",       "ipv6",            "lte_ipv6_address",                       shared_CMIF_get_mobileIPv6_string},
    {"data",       "context.apn",     "lte_pdp_apn",                            shared_CMIF_get_mobileNetworkAPN},
    {"data",       "context.pdp_type", "lte_pdp_type",                          shared_CMIF_get_mobileNetworkPDPType,       code,    "",    enums::pdp_type},
    {"data",       "auto_connect",    "lte_qmi_auto_connect_when_start_up",     shared_CMIF_get_auto_connect_when_start_up, flag},
};
// clang-format on

} // namespace

std::span<const Reading> all_readings()
{
    return rows;
}

} // namespace cmifctl
