#include "registration.h"

namespace at_front
{
namespace
{

using daemons::Registration;
using daemons::Technology;

bool is_registered(Registration state)
{
    return state == Registration::home || state == Registration::roaming;
}

// In a network, the packet services of the other technologies are not there.
Registration state_of(Domain domain, const daemons::ModemStatus &status)
{
    const Registration state = status.registration.value_or(Registration::none);
    if (!is_registered(state) || domain == Domain::circuits)
        return state;
    const bool on_lte = status.technology == Technology::eutran;
    if (on_lte != (domain == Domain::lte) || !status.packet_attached.value_or(false))
        return Registration::none;
    return state;
}

} // namespace

std::string registration_text(Domain domain, const daemons::ModemStatus &status, int level)
{
    const Registration state = state_of(domain, status);
    std::string text = std::to_string(static_cast<int>(state));
    if (level < 2 || !is_registered(state) || !status.technology)
        return text;
    return text + ",\"" + status.cell.lac + "\",\"" + status.cell.cell_id + "\"," +
           std::to_string(static_cast<int>(*status.technology));
}

const char *name_of(Domain domain)
{
    switch (domain) {
    case Domain::circuits:
        return "+CREG";
    case Domain::packets:
        return "+CGREG";
    default:
        return "+CEREG";
    }
}

} // namespace at_front
