// AT requests: SIM security. Codes are the user's input and travel as they are.
#include "at_requests.h"
#include "store.h"

#include <iterator>

using namespace cmif;

int shared_CMIF_get_mobilePINPUKC(int counters[4])
{
    static constexpr char keys[][20] = {"lte_mobile_pin1c", "lte_mobile_puk1c", "lte_mobile_pin2c",
                                        "lte_mobile_puk2c"};
    static constinit AtRequest request{"shared_CMIF_get_mobilePINPUKC", 4};
    static constinit AtSite sites[std::size(keys)];

    const AtReply reply = ask(request);
    if (!reply.arrived)
        return reply.result;
    for (std::size_t counter = 0; counter < std::size(keys); ++counter) {
        const StoredText<4> value(keys[counter]);
        sites[counter].print("Get nvram %s='%s'\n", keys[counter], value.text());
        if (counters)
            counters[counter] = value.number();
    }
    return reply.result;
}

int shared_CMIF_get_mobileSimPINMode(char *out)
{
    static constinit QueryRequest self{{"shared_CMIF_get_mobileSimPINMode", 8}, "lte_sim_pin_mode"};
    return query(self, out);
}

int shared_CMIF_set_mobileSimPINMode(const char *first, const char *second)
{
    static constinit TextsRequest self{{"shared_CMIF_set_mobileSimPINMode", 9}};
    if (!first || !second)
        return CMIF_INVALID;
    return send_texts(self, first, second);
}

// The first argument travels behind the other three, and none is traced: callers depend on both.
int shared_CMIF_set_NetworkPersonalizationLock(const char *first, const char *second,
                                               const char *third, const char *fourth)
{
    static constinit AtRequest request{"shared_CMIF_set_NetworkPersonalizationLock", 10};
    return cmif_round_trip(request,
                           [&](AtMessage &message) {
                               message.announce();
                               message.put(message.record.set_value, first);
                               message.put(message.record.set_string, second);
                               message.put(message.record.set_string2, third);
                               message.put(message.record.set_string3, fourth);
                               return Then::send;
                           })
        .result;
}

int shared_CMIF_set_NetworkPersonalizationUNLock(const char *key)
{
    static constinit TextsRequest self{{"shared_CMIF_set_NetworkPersonalizationUNLock", 11}};
    return send_text(self, key);
}

int shared_CMIF_set_EntermobilePIN(const char *pin)
{
    static constinit TextsRequest self{{"shared_CMIF_set_EntermobilePIN", 12}};
    return send_text(self, pin);
}

int shared_CMIF_set_ChangemobileSimPIN(const char *first, const char *second)
{
    static constinit TextsRequest self{{"shared_CMIF_set_ChangemobileSimPIN", 13}};
    return send_texts(self, first, second);
}

int shared_CMIF_set_EntermobilePINPUK(const char *first, const char *second)
{
    static constinit TextsRequest self{{"shared_CMIF_set_EntermobilePINPUK", 14}};
    return send_texts(self, first, second);
}
