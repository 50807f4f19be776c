// The derived getters: stored texts turned into codes, a length, a joined text.
#include "cmif.h"
#include "store.h"
#include "trace.h"

#include <cstdio>
#include <iterator>
#include <optional>

namespace cmif
{
namespace
{

// One outcome of a converting getter: the stored texts that lead to it, its code, its trace site.
struct Outcome {
    char stored[3][4];
    int code;
    AtSite site{};

    bool matches(const StoredText<12> &value) const
    {
        for (const auto &text : stored)
            if (*text && value.is(text))
                return true;
        return false;
    }
};

// The outcome of the stored value, or null when none is listed.
template <std::size_t rows>
Outcome *outcome_of(const char *key, Outcome (&outcomes)[rows])
{
    const StoredText<12> value(key);
    for (Outcome &outcome : outcomes)
        if (outcome.matches(value))
            return &outcome;
    return nullptr;
}

// `otherwise` is the code of a stored value that isn't listed; without it the output stays.
template <std::size_t rows>
int get_code(const char *key, Outcome (&outcomes)[rows], std::optional<int> otherwise, int *out)
{
    if (!out)
        return CMIF_INVALID;
    if (Outcome *outcome = outcome_of(key, outcomes)) {
        *out = outcome->code;
        outcome->site.print("Get get_val=%d\n", *out);
    } else if (otherwise) {
        *out = *otherwise;
    }
    return CMIF_OK;
}

constexpr int unregistered = 2;
constexpr int unknown = 4;

} // namespace
} // namespace cmif

using namespace cmif;

int shared_CMIF_get_mobileNetworkMode(int *mode)
{
    static constinit Outcome outcomes[] = {{{"0"}, 0}, {{"1"}, 1}, {{"2"}, 2}, {{"3"}, 3}};
    return get_code("lte_network_search_mode", outcomes, unknown, mode);
}

// Reads the network search mode, not a band; callers depend on that and on the gap at "1".
int shared_CMIF_GetBandRegion(int *region)
{
    static constinit Outcome outcomes[] = {{{"0"}, 1}, {{"2"}, 2}, {{"3"}, 3}};
    return get_code("lte_network_search_mode", outcomes, unknown, region);
}

// The misspelt key is the daemon's.
int shared_CMIF_get_mobileInternationalRoam(int *mode)
{
    static constinit Outcome outcomes[] = {{{"255"}, 0}, {{"2"}, 1}, {{"1"}, 2}};
    return get_code("lte_roam_servive_config", outcomes, std::nullopt, mode);
}

int shared_CMIF_get_mobileNetworkStatus(int *status)
{
    static constinit Outcome outcomes[] = {{{"1", "5"}, 0}, {{"2"}, 1}, {{"0", "3", "4"}, 2}};
    return get_code("lte_network_reg_status_state", outcomes, unregistered, status);
}

int shared_CMIF_GetNetworkMode(int *mode)
{
    static constinit AtSite site;
    if (!mode)
        return CMIF_INVALID;
    *mode = StoredText<12>("lte_operator_select_network_mode").is("0") ? 1 : 2;
    site.print("Get ret_val='%d'\n", *mode);
    return CMIF_OK;
}

int shared_CMIF_get_OperatorSelectAct(int *technology)
{
    static constexpr char stored[][4] = {"0", "2", "3", "4", "5", "6", "7", "100"};
    if (!technology)
        return CMIF_INVALID;
    const StoredText<12> value("lte_operator_select_ats_value");
    for (int code = 0; code < static_cast<int>(std::size(stored)); ++code)
        if (value.is(stored[code]))
            *technology = code;
    return CMIF_OK;
}

// Read anew for each comparison: there is no bound on what a platform may store under this key.
int shared_CMIF_get_mobileNetworkPDPType(int *type)
{
    static constinit AtSite site;
    static constexpr char key[] = "lte_pdp_type";
    static constexpr char stored[][8] = {"IP", "PPP", "IPV6", "IPV4V6"};
    if (!type)
        return CMIF_INVALID;
    for (int code = 0; code < static_cast<int>(std::size(stored)); ++code) {
        if (std::strcmp(tarnNvramConfig_get(key), stored[code]) != 0)
            continue;
        *type = code;
        break;
    }
    site.print("Get nvram %s='%d'\n", key, *type);
    return CMIF_OK;
}

int shared_CMIF_get_mobile4gMode(char *out)
{
    static constinit AtSite site;
    static constexpr char technology[] = "lte_query_network_info_access_technology_select";
    if (!out)
        return CMIF_INVALID;
    char *end = out;
    if (std::strcmp(tarnNvramConfig_get("lte_operator_select_ats_value"), "7") == 0) {
        end = stpcpy(end, tarnNvramConfig_get("lte_query_network_duplexmode"));
        *end++ = ' ';
    }
    std::strcpy(end, tarnNvramConfig_get(technology));
    site.print("Get nvram %s='%s'\n", technology, out);
    return CMIF_OK;
}

int shared_CMIF_get_mobileNetworkMNCFormat(char *out)
{
    static constinit AtSite site;
    static constexpr char key[] = "lte_query_network_mnc_format";
    if (!out)
        return CMIF_INVALID;
    std::sprintf(out, "%d",
                 static_cast<int>(std::strlen(tarnNvramConfig_get("lte_query_network_mnc"))));
    tarnNvramConfig_set(key, out);
    site.print("Get nvram %s='%s'\n", key, out);
    return CMIF_OK;
}

int shared_CMIF_get_mobileIPv4Address(char *)
{
    return CMIF_INVALID;
}
