// AT requests: band region, phone functionality, connection profile, device management.
#include "at_requests.h"
#include "store.h"

#include <cstdio>

using namespace cmif;

// The same request code as the network search mode: the daemon sees the value alone.
int shared_CMIF_SetBandRegion(int region)
{
    static constexpr AtRequest request{"shared_CMIF_SetBandRegion", CMIF_AT_SET_SEARCH_MODE};
    static constexpr Choice regions[] = {{1, "0"}, {2, "2"}, {3, "3"}};
    static constinit AtSites sites;
    return send_value(request, sites, Echo::no, region, text_for(region, regions));
}

// The mode travels as one raw byte, not as text.
int shared_CMIF_set_phone_functionality(int mode)
{
    static constexpr AtRequest request{"shared_CMIF_set_phone_functionality",
                                       CMIF_AT_SET_FUNCTIONALITY, bracketed_lines};
    static constinit AtSites sites;
    return cmif_round_trip(request, sites, [&](AtMessage &message) {
        message.trace_type();
        message.record.set_string[0] = static_cast<char>(mode);
        sites.first.print("set_string=[%s]\n", message.record.set_string);
    });
}

// This request alone cuts its texts at their fields.
int shared_CMIF_set_Profile(int profile_id, const char *first, const char *second)
{
    static constexpr AtRequest request{"shared_CMIF_set_Profile", CMIF_AT_SET_PROFILE};
    static constinit AtSites sites;
    return cmif_round_trip(request, sites, [&](AtMessage &message) {
        cmif_msg &record = message.record;
        message.trace_type();
        std::snprintf(record.set_value, sizeof record.set_value, "%d", profile_id);
        copy_text(record.set_string, first);
        copy_text(record.set_string2, second);
    });
}

int shared_CMIF_set_TriggerOTADMSession(void)
{
    static constexpr AtRequest request{"shared_CMIF_set_TriggerOTADMSession",
                                       CMIF_AT_START_DEVICE_MANAGEMENT};
    static constinit AtSites sites;
    return send_request(request, sites);
}

int shared_CMIF_get_SyncProfile3(void)
{
    static constexpr AtRequest request{"shared_CMIF_get_SyncProfile3", CMIF_AT_SYNCHRONIZE_PROFILE};
    static constinit AtSites sites;
    return send_request(request, sites);
}
