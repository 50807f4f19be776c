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

#define TEXT_GETTER(function, form, key)                                                           \
    int function(char *out)                                                                        \
    {                                                                                              \
        static constinit cmif::AtSite site;                                                        \
        return cmif::get_text(out, key, cmif::Form::form, site);                                   \
    }

// clang-format off
TEXT_GETTER(shared_CMIF_get_mobileHWVersion,           quoted, "lte_module_hw_ver")
TEXT_GETTER(shared_CMIF_get_mobileFWVersion,           quoted, "lte_module_sw_ver")
TEXT_GETTER(shared_CMIF_get_mobileIMEI,                quoted, "lte_mobile_imei")
TEXT_GETTER(shared_CMIF_get_mobileIMSI,                quoted, "lte_mobile_imsi")
TEXT_GETTER(shared_CMIF_get_mobileSimICCID,            quoted, "lte_mobile_iccid")
TEXT_GETTER(shared_CMIF_get_mobileSimStatus,           quoted, "lte_sim_status")
TEXT_GETTER(shared_CMIF_get_SubscriberNumber,          bare,   "lte_subscriber_num_number")
TEXT_GETTER(shared_CMIF_get_mobileNetworkMCC,          quoted, "lte_query_network_mcc")
TEXT_GETTER(shared_CMIF_get_mobileLastKnownMCC,        quoted, "lte_query_network_last_mcc")
TEXT_GETTER(shared_CMIF_get_mobileNetworkMNC,          quoted, "lte_query_network_mnc")
TEXT_GETTER(shared_CMIF_get_mobileLastKnownMNC,        quoted, "lte_query_network_last_mnc")
TEXT_GETTER(shared_CMIF_get_mobileNetworkLAC,          quoted, "lte_network_reg_status_lac")
TEXT_GETTER(shared_CMIF_get_mobileLastKnownLAC,        quoted, "lte_network_reg_status_last_lac")
TEXT_GETTER(shared_CMIF_get_mobileNetworkCellID,       quoted, "lte_query_network_cellid")
TEXT_GETTER(shared_CMIF_get_mobileLastKnownCellID,     quoted, "lte_query_network_last_cellid")
TEXT_GETTER(shared_CMIF_get_mobileRSSI,                quoted, "lte_query_network_rssi")
TEXT_GETTER(shared_CMIF_get_mobile_3G_RSSI,            quoted, "lte_mobile_rssi_id_to_dbm")
TEXT_GETTER(shared_CMIF_get_mobileRSRP,                quoted, "lte_query_network_rsrp")
TEXT_GETTER(shared_CMIF_get_mobileRSRQ,                quoted, "lte_query_network_rsrq")
TEXT_GETTER(shared_CMIF_get_mobileRSSINR,              quoted, "lte_query_network_sinr")
TEXT_GETTER(shared_CMIF_get_mobileRadioBand,           quoted, "lte_query_network_info_band")
TEXT_GETTER(shared_CMIF_get_mobileChannelNumber,       always, "lte_query_network_info_channel")
TEXT_GETTER(shared_CMIF_get_mobileACtiveNetwork,       quoted, "lte_query_network_info_access_technology_select")
TEXT_GETTER(shared_CMIF_get_mobileNetworkOperatorName, quoted, "lte_operator_select_operator")
TEXT_GETTER(shared_CMIF_GetOperatorLongName,           value,  "lte_operator_select_operator_longname")
TEXT_GETTER(shared_CMIF_GetOperatorShortName,          value,  "lte_operator_select_operator_shortname")
TEXT_GETTER(shared_CMIF_GetOperatorPlmnName,           value,  "lte_operator_select_operator_plmnname")
TEXT_GETTER(shared_CMIF_get_mobileIPv4_string,         ipv4,   "lte_ipv4_address")
TEXT_GETTER(shared_CMIF_get_mobileIPv6_string,         silent, "lte_ipv6_address")
TEXT_GETTER(shared_CMIF_get_mobileNetworkAPN,          quoted, "lte_pdp_apn")
TEXT_GETTER(shared_CMIF_get_mobileLastKnownAPN,        quoted, "lte_pdp_last_apn")
// clang-format on
