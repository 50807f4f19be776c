// The plain getters: one stored text each, copied unchanged.
#include "cmif.h"
#include "store.h"
#include "trace.h"

#include <cstdio>

namespace cmif
{
namespace
{

// How a getter's trace line shows the key and the value. Log parsers depend on them.
enum class Form { quoted, always, bare, value, ipv4, silent };

void print(Form form, const char *key, const char *value)
{
    switch (form) {
    case Form::quoted:
    case Form::always:
        std::printf("Get nvram %s='%s'\n", key, value);
        break;
    case Form::bare:
        std::printf("Get nvram %s=%s\n", key, value);
        break;
    case Form::value:
        std::printf("get_str='%s'\n", value);
        break;
    case Form::ipv4:
        std::printf("ipv4 address %s='%s'\n", key, value);
        break;
    case Form::silent:
        break;
    }
}

int get_text(char *out, const char *key, Form form, AtSite &site)
{
    if (!out)
        return CMIF_INVALID;
    std::strcpy(out, tarnNvramConfig_get(key));

    if (form == Form::silent)
        return CMIF_OK;
    if (form == Form::always || site.on())
        print(form, key, out);
    return CMIF_OK;
}

} // namespace
} // namespace cmif

#define TEXT_GETTER(function, key, form)                                                           \
    int function(char *out)                                                                        \
    {                                                                                              \
        static constinit cmif::AtSite site;                                                        \
        return cmif::get_text(out, key, cmif::Form::form, site);                                   \
    }

// clang-format off
TEXT_GETTER(shared_CMIF_get_mobileHWVersion,           "lte_module_hw_ver",                     quoted)
TEXT_GETTER(shared_CMIF_get_mobileFWVersion,           "lte_module_sw_ver",                     quoted)
TEXT_GETTER(shared_CMIF_get_mobileIMEI,                "lte_mobile_imei",                       quoted)
TEXT_GETTER(shared_CMIF_get_mobileIMSI,                "lte_mobile_imsi",                       quoted)
TEXT_GETTER(shared_CMIF_get_mobileSimICCID,            "lte_mobile_iccid",                      quoted)
TEXT_GETTER(shared_CMIF_get_mobileSimStatus,           "lte_sim_status",                        quoted)
TEXT_GETTER(shared_CMIF_get_SubscriberNumber,          "lte_subscriber_num_number",             bare)
TEXT_GETTER(shared_CMIF_get_mobileNetworkMCC,          "lte_query_network_mcc",                 quoted)
TEXT_GETTER(shared_CMIF_get_mobileLastKnownMCC,        "lte_query_network_last_mcc",            quoted)
TEXT_GETTER(shared_CMIF_get_mobileNetworkMNC,          "lte_query_network_mnc",                 quoted)
TEXT_GETTER(shared_CMIF_get_mobileLastKnownMNC,        "lte_query_network_last_mnc",            quoted)
TEXT_GETTER(shared_CMIF_get_mobileNetworkLAC,          "lte_network_reg_status_lac",            quoted)
TEXT_GETTER(shared_CMIF_get_mobileLastKnownLAC,        "lte_network_reg_status_last_lac",       quoted)
TEXT_GETTER(shared_CMIF_get_mobileNetworkCellID,       "lte_query_network_cellid",              quoted)
TEXT_GETTER(shared_CMIF_get_mobileLastKnownCellID,     "lte_query_network_last_cellid",         quoted)
TEXT_GETTER(shared_CMIF_get_mobileRSSI,                "lte_query_network_rssi",                quoted)
TEXT_GETTER(shared_CMIF_get_mobile_3G_RSSI,            "lte_mobile_rssi_id_to_dbm",             quoted)
TEXT_GETTER(shared_CMIF_get_mobileRSRP,                "lte_query_network_rsrp",                quoted)
TEXT_GETTER(shared_CMIF_get_mobileRSRQ,                "lte_query_network_rsrq",                quoted)
TEXT_GETTER(shared_CMIF_get_mobileRSSINR,              "lte_query_network_sinr",                quoted)
TEXT_GETTER(shared_CMIF_get_mobileRadioBand,           "lte_query_network_info_band",           quoted)
TEXT_GETTER(shared_CMIF_get_mobileChannelNumber,       "lte_query_network_info_channel",        always)
TEXT_GETTER(shared_CMIF_get_mobileACtiveNetwork,       "lte_query_network_info_access_technology_select", quoted)
TEXT_GETTER(shared_CMIF_get_mobileNetworkOperatorName, "lte_operator_select_operator",          quoted)
TEXT_GETTER(shared_CMIF_GetOperatorLongName,           "lte_operator_select_operator_longname", value)
TEXT_GETTER(shared_CMIF_GetOperatorShortName,          "lte_operator_select_operator_shortname", value)
TEXT_GETTER(shared_CMIF_GetOperatorPlmnName,           "lte_operator_select_operator_plmnname", value)
TEXT_GETTER(shared_CMIF_get_mobileIPv4_string,         "lte_ipv4_address",                      ipv4)
TEXT_GETTER(shared_CMIF_get_mobileIPv6_string,         "lte_ipv6_address",                      silent)
TEXT_GETTER(shared_CMIF_get_mobileNetworkAPN,          "lte_pdp_apn",                           quoted)
TEXT_GETTER(shared_CMIF_get_mobileLastKnownAPN,        "lte_pdp_last_apn",                      quoted)
// clang-format on
