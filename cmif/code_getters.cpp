// The derived getters: stored texts turned into codes, a length, a joined text.
#include "array_size.h"
#include "cmif.h"
#include "store.h"
#include "trace.h"

#include <cstdio>

namespace cmif
{
namespace
{

// The stored texts that lead to one code, at most 3. A last row without any matches all others.
struct Outcome {
    char stored[3][4];
    int code;

    bool is_listed() const { return *stored[0]; }
    bool matches(const StoredText<12> &value) const
    {
        if (!is_listed())
            return true;
        for (const auto &text : stored)
            if (*text && value.is(text))
                return true;
        return false;
    }
};

// Writes the code of the first row that matches; without one the output is unchanged. Each row that
// lists texts has its own trace line.
int get_code(const char *key, const Outcome *outcomes, AtSite *sites, std::size_t rows, int *out)
{
    if (!out)
        return CMIF_INVALID;
    const StoredText<12> value(key);
    for (std::size_t row = 0; row < rows; ++row) {
        if (!outcomes[row].matches(value))
            continue;
        *out = outcomes[row].code;
        if (outcomes[row].is_listed())
            sites[row].print("Get get_val=%d\n", *out);
        break;
    }
    return CMIF_OK;
}

template <std::size_t rows>
int get_code(const char *key, const Outcome (&outcomes)[rows], AtSite (&sites)[rows], int *out)
{
    return get_code(key, outcomes, sites, rows, out);
}

} // namespace
} // namespace cmif

using namespace cmif;

int shared_CMIF_get_mobileNetworkMode(int *mode)
{
    static constexpr Outcome modes[] = {{{"0"}, 0}, {{"1"}, 1}, {{"2"}, 2}, {{"3"}, 3}, {{}, 4}};
    static constinit AtSite sites[array_size(modes)];
    return get_code("lte_network_search_mode", modes, sites, mode);
}

// Reads the network search mode, not a band; callers depend on that and on the gap at "1".
int shared_CMIF_GetBandRegion(int *region)
{
    static constexpr Outcome regions[] = {{{"0"}, 1}, {{"2"}, 2}, {{"3"}, 3}, {{}, 4}};
    static constinit AtSite sites[array_size(regions)];
    return get_code("lte_network_search_mode", regions, sites, region);
}

// The daemon's key is misspelt.
int shared_CMIF_get_mobileInternationalRoam(int *mode)
{
    static constexpr Outcome modes[] = {{{"255"}, 0}, {{"2"}, 1}, {{"1"}, 2}};
    static constinit AtSite sites[array_size(modes)];
    return get_code("lte_roam_servive_config", modes, sites, mode);
}

int shared_CMIF_get_mobileNetworkStatus(int *status)
{
    static constexpr Outcome states[] = {
        {{"1", "5"}, 0}, {{"2"}, 1}, {{"0", "3", "4"}, 2}, {{}, 2}};
    static constinit AtSite sites[array_size(states)];
    return get_code("lte_network_reg_status_state", states, sites, status);
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
    for (int code = 0; code < static_cast<int>(array_size(stored)); ++code)
        if (value.is(stored[code]))
            *technology = code;
    return CMIF_OK;
}

// Read again for each comparison: a platform may store a value of any length under this key.
int shared_CMIF_get_mobileNetworkPDPType(int *type)
{
    static constinit AtSite site;
    static constexpr char key[] = "lte_pdp_type";
    static constexpr char stored[][8] = {"IP", "PPP", "IPV6", "IPV4V6"};
    if (!type)
        return CMIF_INVALID;
    for (int code = 0; code < static_cast<int>(array_size(stored)); ++code) {
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
    const auto digits = static_cast<int>(std::strlen(tarnNvramConfig_get("lte_query_network_mnc")));
    std::sprintf(out, "%d", digits);
    tarnNvramConfig_set(key, out);
    site.print("Get nvram %s='%s'\n", key, out);
    return CMIF_OK;
}

int shared_CMIF_get_mobileIPv4Address(char *)
{
    return CMIF_INVALID;
}
