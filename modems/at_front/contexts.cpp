#include "contexts.h"

namespace at_front
{
namespace
{

using daemons::ConnectionState;
using daemons::DataProfile;
using daemons::PdpProfile;
using daemons::PdpType;

DataProfile profile_of(const Device &device, int context)
{
    const PdpProfile stored = device.inspect(
        [context](const ModemState &state, Time) { return state.profiles.stored(context); });
    const Credentials login = device.credentials(context);
    const bool ipv6 = stored.type == PdpType::ipv6;
    return {stored.apn, login.user,  login.password,
            login.kind, stored.type, ipv6 ? daemons::IpFamily::ipv6 : daemons::IpFamily::ipv4};
}

ConnectionState connection(const Device &device)
{
    return device.inspect([](const ModemState &state, Time) { return state.connection.state(); });
}

bool wait_for_connection(Call &call)
{
    constexpr std::chrono::minutes limit{3};
    return call.device.wait_until(
        [&] { return connection(call.device) != ConnectionState::transitioning; }, limit,
        call.called_off);
}

} // namespace

// A connection that did not come from here uses the profile of data connections.
std::optional<int> connected_context(const Device &device)
{
    if (connection(device) != ConnectionState::connected)
        return std::nullopt;
    return device.active_context().value_or(simulated::Profiles::data_profile);
}

Answer activate(Call &call, int context)
{
    const auto connected = connected_context(call.device);
    if (connected)
        return connected == context ? ok : ended(CmeError::not_allowed);
    simulated::Modem &modem = call.device.modem();
    call.device.set_active_context(context);
    modem.set_data_profile(profile_of(call.device, context));
    if (const CmeError refusal = modem.connect(); refusal != CmeError::ok)
        return ended(refusal);
    if (!wait_for_connection(call))
        return ended(CmeError::network_timeout);
    const daemons::ModemStatus status = modem.status();
    if (status.connection == ConnectionState::connected)
        return ok;
    return ended(status.last_error == CmeError::ok ? CmeError::unknown : status.last_error);
}

Answer deactivate(Call &call, int context)
{
    if (connected_context(call.device) != context)
        return ok;
    call.device.modem().disconnect();
    return wait_for_connection(call) ? ok : ended(CmeError::network_timeout);
}

} // namespace at_front
