#include "checks.h"

namespace cmifctl
{
namespace
{

// What the AT daemon publishes, while it lives. "" otherwise: the store keeps old values.
std::string published(const Look &look, const char *key)
{
    return look.served() ? look.store.value(key) : "";
}

std::string sim_status(const Look &look)
{
    return published(look, "lte_sim_status");
}

std::string registration(const Look &look)
{
    return published(look, "lte_network_reg_status_state");
}

Texts when(bool wrong, const char *text)
{
    return wrong ? Texts{text} : Texts{};
}

} // namespace

Texts checks::sim_absent(const Look &look)
{
    return when(sim_status(look) == "NOT INSERTED", "no SIM is inserted");
}

Texts checks::sim_not_ready(const Look &look)
{
    return when(sim_status(look) == "NOT READY", "the SIM is not ready");
}

Texts checks::sim_pin_required(const Look &look)
{
    return when(sim_status(look) == "SIM PIN", "the SIM asks for its PIN");
}

Texts checks::sim_puk_required(const Look &look)
{
    return when(sim_status(look) == "SIM PUK", "the PIN is blocked: the SIM asks for its PUK");
}

Texts checks::sim_network_locked(const Look &look)
{
    return when(sim_status(look) == "PH-NET PIN",
                "the modem is locked to the SIMs of another network");
}

Texts checks::sim_blocked(const Look &look)
{
    return when(sim_status(look) == "SIM FAILURE",
                "the SIM has failed: it is defective, or its PUK is used up");
}

Texts checks::registration_denied(const Look &look)
{
    return when(registration(look) == "3", "the network denies the registration");
}

Texts checks::searching(const Look &look)
{
    return when(sim_status(look) == "READY" && registration(look) == "2",
                "the modem is searching for a network");
}

// A locked SIM explains it.
Texts checks::not_registered(const Look &look)
{
    const std::string state = registration(look);
    return when(sim_status(look) == "READY" && (state == "0" || state == "4"),
                "the modem is not registered with a network");
}

} // namespace cmifctl
