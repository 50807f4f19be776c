#include "connection_reason.h"

#include "cmif/cmif.h"
#include "qmi_readings.h"
#include "settings.h"

namespace cmifctl
{
namespace
{

std::string sim_cure(int state)
{
    constexpr int pin_required = 3;
    constexpr int puk_required = 4;
    constexpr int network_locked = 5;
    switch (state) {
    case pin_required:
        return "'cmifctl sim enter-pin' unlocks it.";
    case puk_required:
        return "'cmifctl sim enter-puk' unblocks it and sets a new PIN.";
    case network_locked:
        return "'cmifctl sim unlock-network' removes the lock; it asks for the control key.";
    default:
        return "'cmifctl sim status' shows the SIM.";
    }
}

} // namespace

std::string last_error(const Context &context)
{
    return setting(context, "lte_qmi_last_error");
}

Reason connection_reason(const Context &context)
{
    constexpr int ready = 2;
    const Json sim = qmi_call(context, sim_state_call());
    if (sim != ready)
        return {"the SIM's state is: " + enumeration_text(enums::sim_state, sim), sim_cure(sim)};
    constexpr int registered = 0;
    if (read(context, "shared_CMIF_get_mobileNetworkStatus",
             reads(shared_CMIF_get_mobileNetworkStatus)) != registered)
        return {"the modem is not registered with a network",
                "'cmifctl network show' shows the registration, 'cmifctl radio functionality full' "
                "switches the radio on."};
    const std::string error = last_error(context);
    return {error.empty() ? "the daemon gives no reason" : "the daemon reports: " + error,
            "'cmifctl log show' may show more."};
}

} // namespace cmifctl
