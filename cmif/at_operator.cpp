// AT requests: operator selection.
#include "at_requests.h"

using namespace cmif;

int shared_CMIF_SetNetworkProvider(const char *provider, const char *provider2)
{
    static constinit AtRequest request{"shared_CMIF_SetNetworkProvider", 17};
    static constinit AtSite first, second;
    if (!provider || !provider2)
        return CMIF_INVALID;
    return cmif_round_trip(request,
                           [&](AtMessage &message) {
                               message.put(message.record.set_string, provider);
                               message.put(message.record.set_string2, provider2);
                               message.announce();
                               first.print("snd_op.set_string=%s\n", message.record.set_string);
                               second.print("snd_op.set_string2=%s\n", message.record.set_string2);
                               return Then::send;
                           })
        .result;
}

int shared_CMIF_get_ModeManualSearch(void)
{
    static constinit AtRequest request{"shared_CMIF_get_ModeManualSearch", 23, daemon_lines};
    return ask(request).result;
}

int shared_CMIF_set_ModeManualSearch(void)
{
    static constinit AtRequest request{"shared_CMIF_set_ModeManualSearch", 24, daemon_lines};
    return ask(request).result;
}
