#include "getters.h"

#include "cmif/cmif.h"
#include "platform/tarn_nvram_config.h"
#include "stores.h"

#include <cstring>
#include <iterator>

namespace bench
{
namespace
{

struct Getter {
    int (*get)(char *);
    const char *key, *value;
};

// clang-format off
constexpr Getter getters[] = {
    {shared_CMIF_get_mobileHWVersion,           "lte_module_hw_ver",            "LTE R1"},
    {shared_CMIF_get_mobileIMEI,                "lte_mobile_imei",              "001010012345672"},
    {shared_CMIF_get_mobileSimICCID,            "lte_mobile_iccid",             "8900101123456789016"},
    {shared_CMIF_get_mobileSimStatus,           "lte_sim_status",               "READY"},
    {shared_CMIF_get_mobileNetworkMCC,          "lte_query_network_mcc",        "001"},
    {shared_CMIF_get_mobileNetworkCellID,       "lte_query_network_cellid",     "01A2D003"},
    {shared_CMIF_get_mobileRSRP,                "lte_query_network_rsrp",       "-97"},
    {shared_CMIF_get_mobileNetworkOperatorName, "lte_operator_select_operator", "Test Network"},
    {shared_CMIF_get_mobileIPv4_string,         "lte_ipv4_address",             "192.0.2.10"},
    {shared_CMIF_get_mobileNetworkAPN,          "lte_pdp_apn",                  "internet.example"},
};
// clang-format on
static_assert(std::size(getters) == getter_count);

char out[256];

} // namespace

void set_getter_keys()
{
    for (const Getter &getter : getters)
        set_in_both(getter.key, getter.value);
}

void get_all()
{
    for (const Getter &getter : getters)
        getter.get(out);
}

void get_all_by_hand()
{
    for (const Getter &getter : getters)
        std::strcpy(out, tarnNvramConfig_get(getter.key));
}

} // namespace bench
