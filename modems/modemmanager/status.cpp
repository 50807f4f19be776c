#include "status.h"

namespace modem_manager
{

using daemons::ModemStatus;
using daemons::SimStatus;

namespace
{

std::optional<SimStatus> failed_sim(const ModemView &view)
{
    switch (view.get("StateFailedReason").number().value_or(0)) {
    case failed_reason::sim_missing:
        return SimStatus::absent;
    case failed_reason::sim_error:
    case failed_reason::esim_without_profiles:
        return SimStatus::not_ready;
    default:
        return std::nullopt;
    }
}

// Retries by lock, a{uu}.
std::optional<int> retries(const ModemView &view, int of)
{
    for (const Value &entry : view.get("UnlockRetries").items())
        if (entry.item(0).number() == of && entry.item(1).number() != lock::retries_unknown)
            return static_cast<int>(entry.item(1).number().value_or(0));
    return std::nullopt;
}

std::optional<SimStatus> sim_status(const ModemView &view)
{
    if (view.state() == state::failed)
        return failed_sim(view);
    switch (view.lock()) {
    case lock::none:
    case lock::sim_pin2: // these guard what no request uses
    case lock::sim_puk2:
        return SimStatus::ready;
    case lock::sim_pin:
        return SimStatus::pin_required;
    case lock::sim_puk:
        return retries(view, lock::sim_puk) == 0 ? SimStatus::permanently_blocked
                                                 : SimStatus::puk_required;
    case lock::network_pin:
    case lock::network_puk:
        return SimStatus::network_locked;
    case lock::unknown:
        return std::nullopt;
    default: // bound to a provider or a device, for example
        return SimStatus::not_ready;
    }
}

// A SIM that asks for its PIN, or the PUK, has the PIN switched on, and nothing else tells then.
std::optional<bool> pin_enabled(const ModemView &view)
{
    if (view.lock() == lock::sim_pin || view.lock() == lock::sim_puk)
        return true;
    const Value locks = view.get(modem_3gpp, "EnabledFacilityLocks");
    if (!locks)
        return std::nullopt;
    return (static_cast<unsigned>(locks.number().value_or(0)) & facility::sim) != 0;
}

void add_identity(const ModemView &view, ModemStatus &status)
{
    const std::string revision = view.get("HardwareRevision").text();
    status.hardware = view.get("Model").text();
    if (!revision.empty())
        status.hardware += (status.hardware.empty() ? "" : " ") + revision;
    status.firmware = view.get("Revision").text();
    status.imei = view.get(modem_3gpp, "Imei").text();
    if (status.imei.empty())
        status.imei = view.get("EquipmentIdentifier").text();
}

} // namespace

void add_sim(const ModemView &view, ModemStatus &status)
{
    status.sim = sim_status(view);
    if (status.sim == SimStatus::absent || status.sim == SimStatus::not_ready || !status.sim)
        return;
    status.pin_enabled = pin_enabled(view);
    status.attempts = {retries(view, lock::sim_pin), retries(view, lock::sim_puk),
                       retries(view, lock::sim_pin2), retries(view, lock::sim_puk2)};
    status.iccid = view.sim("SimIdentifier").text();
    status.imsi = view.sim("Imsi").text();
    status.subscriber_number = view.get("OwnNumbers").item(0).text();
}

ModemStatus status_of(const LocalState &local)
{
    ModemStatus status;
    status.messages = local.messages;
    status.search = local.search;
    status.data_profile = local.data_profile;
    status.last_error = local.last_error;
    status.last_apn = local.last_apn;
    return status;
}

ModemStatus status_of(const ModemView &view, const LocalState &local)
{
    ModemStatus status = status_of(local);
    add_identity(view, status);
    add_sim(view, status);
    add_network(view, local, status);
    add_signal(view, status);
    add_connection(view, local, status);
    return status;
}

} // namespace modem_manager
