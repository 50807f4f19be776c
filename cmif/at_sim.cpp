// AT requests: SIM security. PINs, PUKs and keys are the user's input and are sent unchanged.
#include "array_size.h"
#include "at_requests.h"
#include "store.h"

using namespace cmif;

int shared_CMIF_get_mobilePINPUKC(int counters[4])
{
    static constexpr AtRequest request{"shared_CMIF_get_mobilePINPUKC", CMIF_AT_GET_PIN_COUNTERS};
    static constexpr char keys[][20] = {"lte_mobile_pin1c", "lte_mobile_puk1c", "lte_mobile_pin2c",
                                        "lte_mobile_puk2c"};
    static constinit AtSites sites;
    static constinit AtSite counter_sites[array_size(keys)];
    return query(request, sites, [&] {
        for (std::size_t counter = 0; counter < array_size(keys); ++counter) {
            const StoredText<4> value(keys[counter]);
            counter_sites[counter].print("Get nvram %s='%s'\n", keys[counter], value.text());
            if (counters)
                counters[counter] = value.number();
        }
    });
}

int shared_CMIF_get_mobileSimPINMode(char *out)
{
    static constexpr AtRequest request{"shared_CMIF_get_mobileSimPINMode", CMIF_AT_GET_PIN_MODE};
    static constinit AtSites sites;
    return query_text(request, sites, "lte_sim_pin_mode", out);
}

int shared_CMIF_set_mobileSimPINMode(const char *first, const char *second)
{
    static constexpr AtRequest request{"shared_CMIF_set_mobileSimPINMode", CMIF_AT_SET_PIN_MODE};
    static constinit AtSites sites;
    if (!first || !second)
        return CMIF_INVALID;
    return send_texts(request, sites, first, second);
}

// The first argument travels in the last field, and none is traced: callers depend on both.
int shared_CMIF_set_NetworkPersonalizationLock(const char *first, const char *second,
                                               const char *third, const char *fourth)
{
    static constexpr AtRequest request{"shared_CMIF_set_NetworkPersonalizationLock",
                                       CMIF_AT_LOCK_NETWORK};
    static constinit AtSites sites;
    return cmif_round_trip(request, sites, [&](AtMessage &message) {
        message.trace_type();
        message.set_text(message.record.set_value, first);
        message.set_text(message.record.set_string, second);
        message.set_text(message.record.set_string2, third);
        message.set_text(message.record.set_string3, fourth);
    });
}

int shared_CMIF_set_NetworkPersonalizationUNLock(const char *key)
{
    static constexpr AtRequest request{"shared_CMIF_set_NetworkPersonalizationUNLock",
                                       CMIF_AT_UNLOCK_NETWORK};
    static constinit AtSites sites;
    return send_text(request, sites, key);
}

int shared_CMIF_set_EntermobilePIN(const char *pin)
{
    static constexpr AtRequest request{"shared_CMIF_set_EntermobilePIN", CMIF_AT_ENTER_PIN};
    static constinit AtSites sites;
    return send_text(request, sites, pin);
}

int shared_CMIF_set_ChangemobileSimPIN(const char *first, const char *second)
{
    static constexpr AtRequest request{"shared_CMIF_set_ChangemobileSimPIN", CMIF_AT_CHANGE_PIN};
    static constinit AtSites sites;
    return send_texts(request, sites, first, second);
}

int shared_CMIF_set_EntermobilePINPUK(const char *first, const char *second)
{
    static constexpr AtRequest request{"shared_CMIF_set_EntermobilePINPUK", CMIF_AT_ENTER_PUK};
    static constinit AtSites sites;
    return send_texts(request, sites, first, second);
}
