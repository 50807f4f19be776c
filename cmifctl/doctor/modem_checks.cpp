#include "checks.h"

namespace cmifctl
{
namespace
{

constexpr const char *pin_attempts = "lte_mobile_pin1c";
constexpr const char *puk_attempts = "lte_mobile_puk1c";

// What the AT daemon publishes, while it lives. "" otherwise: the store keeps old values.
std::string published(const Snapshot &snapshot, const char *key)
{
    return snapshot.served() ? snapshot.store.value(key) : "";
}

std::string sim_status(const Snapshot &snapshot)
{
    return published(snapshot, "lte_sim_status");
}

std::string registration(const Snapshot &snapshot)
{
    return published(snapshot, "lte_network_reg_status_state");
}

Problems when(bool wrong, const char *text)
{
    return wrong ? Problems{text} : Problems{};
}

} // namespace

Problems checks::sim_absent(const Snapshot &snapshot)
{
    return when(sim_status(snapshot) == "NOT INSERTED", "no SIM is inserted");
}

Problems checks::sim_not_ready(const Snapshot &snapshot)
{
    return when(sim_status(snapshot) == "NOT READY", "the SIM is not ready");
}

Problems checks::sim_pin_required(const Snapshot &snapshot)
{
    return when(sim_status(snapshot) == "SIM PIN" && published(snapshot, pin_attempts) != "1",
                "the SIM asks for its PIN");
}

Problems checks::sim_pin_last(const Snapshot &snapshot)
{
    return when(sim_status(snapshot) == "SIM PIN" && published(snapshot, pin_attempts) == "1",
                "the SIM asks for its PIN, and only one attempt is left");
}

Problems checks::sim_puk_required(const Snapshot &snapshot)
{
    return when(sim_status(snapshot) == "SIM PUK" && published(snapshot, puk_attempts) != "1",
                "the PIN is blocked: the SIM asks for its PUK");
}

Problems checks::sim_puk_last(const Snapshot &snapshot)
{
    return when(sim_status(snapshot) == "SIM PUK" && published(snapshot, puk_attempts) == "1",
                "the PIN is blocked: the SIM asks for its PUK, and only one attempt is left");
}

Problems checks::sim_network_locked(const Snapshot &snapshot)
{
    return when(sim_status(snapshot) == "PH-NET PIN",
                "the modem is locked to the SIMs of another network");
}

Problems checks::sim_blocked(const Snapshot &snapshot)
{
    return when(sim_status(snapshot) == "SIM FAILURE",
                "the SIM has failed: it is defective, or its PUK is used up");
}

Problems checks::registration_denied(const Snapshot &snapshot)
{
    return when(registration(snapshot) == "3", "the network denies the registration");
}

Problems checks::searching(const Snapshot &snapshot)
{
    return when(sim_status(snapshot) == "READY" && registration(snapshot) == "2",
                "the modem is searching for a network");
}

// A locked SIM explains it.
Problems checks::not_registered(const Snapshot &snapshot)
{
    const std::string state = registration(snapshot);
    return when(sim_status(snapshot) == "READY" && (state == "0" || state == "4"),
                "the modem is not registered with a network");
}

} // namespace cmifctl
