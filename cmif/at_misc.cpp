// AT requests: band region, phone functionality, connection profile, device management.
#include "at_requests.h"
#include "store.h"

#include <cstdio>
#include <iterator>

using namespace cmif;

// The same request code as the network mode: the daemon tells the two apart by the value alone.
int shared_CMIF_SetBandRegion(int region)
{
    static constinit ValueRequest self{{"shared_CMIF_SetBandRegion", 2}};
    static constexpr Choice regions[] = {{1, "0"}, {2, "2"}, {3, "3"}};
    return send_value(self, Echo::no, region, chosen(region, regions, std::size(regions)));
}

// Brackets, the line for the second queue and the result 2 for it are this request's own.
int shared_CMIF_set_phone_functionality(int mode)
{
    static constinit AtRequest request{"shared_CMIF_set_phone_functionality", 22, bracketed_lines};
    static constinit AtSite site;
    return cmif_round_trip(request,
                           [&](AtMessage &message) {
                               message.announce();
                               message.record.set_string[0] =
                                   static_cast<char>(mode); // a raw byte, not text
                               site.print("set_string=[%s]\n", message.record.set_string);
                               return Then::send;
                           })
        .result;
}

int shared_CMIF_set_Profile(int profile_id, const char *first, const char *second)
{
    static constinit AtRequest request{"shared_CMIF_set_Profile", 25};
    return cmif_round_trip(request,
                           [&](AtMessage &message) {
                               message.announce();
                               std::snprintf(message.record.set_value,
                                             sizeof message.record.set_value, "%d", profile_id);
                               copy_text(message.record.set_string,
                                         first); // cut at the field, in this request alone
                               copy_text(message.record.set_string2, second);
                               return Then::send;
                           })
        .result;
}

int shared_CMIF_set_TriggerOTADMSession(void)
{
    static constinit AtRequest request{"shared_CMIF_set_TriggerOTADMSession", 26};
    return ask(request).result;
}

int shared_CMIF_get_SyncProfile3(void)
{
    static constinit AtRequest request{"shared_CMIF_get_SyncProfile3", 27};
    return ask(request).result;
}
