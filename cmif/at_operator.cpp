// AT requests: operator selection.
#include "at_requests.h"

using namespace cmif;

int shared_CMIF_SetNetworkProvider(const char *provider, const char *provider2)
{
    static constexpr AtRequest request{"shared_CMIF_SetNetworkProvider", CMIF_AT_SELECT_OPERATOR};
    static constinit AtSites sites;
    if (!provider || !provider2)
        return CMIF_INVALID;
    return cmif_round_trip(request, sites, [&](AtMessage &message) {
        message.trace_type();
        message.set_text(message.record.set_string, provider);
        message.set_text(message.record.set_string2, provider2);
        sites.first.print("snd_op.set_string=%s\n", message.record.set_string);
        sites.second.print("snd_op.set_string2=%s\n", message.record.set_string2);
    });
}

int shared_CMIF_get_ModeManualSearch(void)
{
    static constexpr AtRequest request{"shared_CMIF_get_ModeManualSearch", CMIF_AT_GET_SEARCH_STATE,
                                       daemon_lines};
    static constinit AtSites sites;
    return send_request(request, sites);
}

int shared_CMIF_set_ModeManualSearch(void)
{
    static constexpr AtRequest request{"shared_CMIF_set_ModeManualSearch", CMIF_AT_SEARCH,
                                       daemon_lines};
    static constinit AtSites sites;
    return send_request(request, sites);
}
