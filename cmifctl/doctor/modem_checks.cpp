#include "checks.h"

namespace cmifctl
{
namespace
{

constexpr const char *pin_attempts = "lte_mobile_pin1c";
constexpr const char *puk_attempts = "lte_mobile_puk1c";

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

Problems when(bool wrong, const char *text)
{
    return wrong ? Problems{text} : Problems{};
}

} // namespace

Problems checks::sim_absent(const Look &look)
{
    return when(sim_status(look) == "NOT INSERTED", "no SIM is inserted");
}

Problems checks::sim_not_ready(const Look &look)
{
    return when(sim_status(look) == "NOT READY", "the SIM is not ready");
}

Problems checks::sim_pin_required(const Look &look)
{
    return when(sim_status(look) == "SIM PIN" && published(look, pin_attempts) != "1",
                "the SIM asks for its PIN");
}

Problems checks::sim_pin_last(const Look &look)
{
    return when(sim_status(look) == "SIM PIN" && published(look, pin_attempts) == "1",
                "the SIM asks for its PIN, and only one attempt is left");
}

Problems checks::sim_puk_required(const Look &look)
{
    return when(sim_status(look) == "SIM PUK" && published(look, puk_attempts) != "1",
                "the PIN is blocked: the SIM asks for its PUK");
}

Problems checks::sim_puk_last(const Look &look)
{
    return when(sim_status(look) == "SIM PUK" && published(look, puk_attempts) == "1",
                "the PIN is blocked: the SIM asks for its PUK, and only one attempt is left");
}

Problems checks::sim_network_locked(const Look &look)
{
    return when(sim_status(look) == "PH-NET PIN",
                "the modem is locked to the SIMs of another network");
}

Problems checks::sim_blocked(const Look &look)
{
    return when(sim_status(look) == "SIM FAILURE",
                "the SIM has failed: it is defective, or its PUK is used up");
}

Problems checks::registration_denied(const Look &look)
{
    return when(registration(look) == "3", "the network denies the registration");
}

Problems checks::searching(const Look &look)
{
    return when(sim_status(look) == "READY" && registration(look) == "2",
                "the modem is searching for a network");
}

// A locked SIM explains it.
Problems checks::not_registered(const Look &look)
{
    const std::string state = registration(look);
    return when(sim_status(look) == "READY" && (state == "0" || state == "4"),
                "the modem is not registered with a network");
}

} // namespace cmifctl
