#include "connection_reason.h"

#include "qmi_readings.h"
#include "settings.h"

namespace cmifctl
{
namespace
{

std::string sim_hint(int state)
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
        return {"the SIM's state is: " + enumeration_text(enums::sim_state, sim), sim_hint(sim)};
    const Json registration =
        enumeration(enums::registration, setting(context, "lte_network_reg_status_state"))["name"];
    if (registration == "searching")
        return {"the modem is searching for a network", searching_hint};
    if (registration == "denied")
        return {"the network denies the registration", denied_hint};
    if (registration != "home" && registration != "roaming")
        return {"the modem is not registered with a network", not_registered_hint};
    const std::string error = last_error(context);
    return {error.empty() ? "the daemon gives no reason" : "the daemon reports: " + error,
            "'cmifctl log show' may show more."};
}

} // namespace cmifctl
