// The data connection.
#include "ip_type.h"
#include "status.h"

namespace modem_manager
{
namespace
{

using daemons::ConnectionState;
using daemons::ModemStatus;

ConnectionState connection_state(const ModemView &view, const LocalState &local)
{
    const int now = view.state();
    if (local.in_transition || now == state::connecting || now == state::disconnecting)
        return ConnectionState::transitioning;
    return view.connected_bearer().empty() ? ConnectionState::disconnected
                                           : ConnectionState::connected;
}

void add_pdp(const Dictionary &settings, ModemStatus &status)
{
    const Value type = find(settings, "ip-type");
    if (type)
        status.pdp_type = pdp_type_of(static_cast<unsigned>(type.number().value_or(0)));
    status.pdp_apn = find(settings, "apn").text();
}

} // namespace

void add_uptime(const LocalState &local, ModemStatus &status)
{
    using namespace std::chrono;
    if (status.connection != ConnectionState::connected)
        status.uptime = 0;
    else if (local.connected_since)
        status.uptime = floor<seconds>(steady_clock::now() - *local.connected_since).count();
    else
        status.uptime.reset();
}

void add_connection(const ModemView &view, const LocalState &local, ModemStatus &status)
{
    const ConnectionState now = connection_state(view, local);
    status.connection = now;
    add_uptime(local, status);
    if (now == ConnectionState::connected) {
        status.ipv4_address = find(view.of_bearer("Ip4Config").dictionary(), "address").text();
        status.ipv6_address = find(view.of_bearer("Ip6Config").dictionary(), "address").text();
        add_pdp(view.of_bearer("Properties").dictionary(), status);
        return;
    }
    if (local.profile) {
        status.pdp_type = local.profile->type;
        status.pdp_apn = local.profile->apn;
        return;
    }
    add_pdp(view.get(modem_3gpp, "InitialEpsBearerSettings").dictionary(), status);
}

} // namespace modem_manager
