// The data connection.
#include "ip_type.h"
#include "modem.h"

namespace modem_manager
{
namespace
{

using namespace std::chrono_literals;
using daemons::Authentication;
using daemons::DataProfile;
using daemons::Roaming;

constexpr auto report_limit = 10s; // from ModemManager's answer until its objects show it

unsigned allowed_auth_of(Authentication authentication)
{
    switch (authentication) {
    case Authentication::none:
        return allowed_auth::none;
    case Authentication::pap:
        return allowed_auth::pap;
    case Authentication::chap:
        return allowed_auth::chap;
    case Authentication::pap_or_chap:
        break;
    }
    return allowed_auth::pap | allowed_auth::chap;
}

Value settings_of(const DataProfile &profile, Roaming roaming)
{
    Entries entries;
    entries.add("apn", profile.apn);
    entries.add("ip-type", ip_family_of(profile.pdp_type, profile.family));
    entries.add("allow-roaming", g_variant_new_boolean(roaming != Roaming::off));
    entries.add("allowed-auth", allowed_auth_of(profile.authentication));
    if (profile.authentication != Authentication::none) {
        entries.add("user", profile.user);
        entries.add("password", profile.password);
    }
    return entries.tuple();
}

bool is_connected(const ModemView &view)
{
    return !view.connected_bearer().empty();
}

} // namespace

// What was noted of it may lag behind.
bool Modem::is_up() const
{
    const std::string device = this->device();
    return tree_.read([&](const Objects &objects) {
        return is_connected(ModemView(objects, find_modem(objects, device)));
    });
}

CmeError Modem::data_refusal(const ModemStatus &status, int state) const
{
    const CmeError error = refusal(Needs::network, status, state);
    if (error != CmeError::ok)
        return error;
    if (status.data_profile.apn.empty())
        return CmeError::missing_apn;
    if (status.packet_domain == false)
        return CmeError::not_allowed;
    const bool abroad = status.registration == daemons::Registration::roaming;
    return abroad && status.roaming == Roaming::off ? CmeError::network_not_allowed : CmeError::ok;
}

// The first one is what was saved before this start: a connection that is up has it already.
CmeError Modem::set_data_profile(const DataProfile &profile)
{
    if (!is_carried(profile.apn) || !is_carried(profile.user) || !is_carried(profile.password))
        return CmeError::incorrect_parameters;
    const bool up = is_up() || connection_.busy();
    bool again = false;
    with_local_state([&](LocalState &local) {
        local.data_profile = profile;
        again = has_profile_ && up;
        has_profile_ = true;
        if (again)
            local.last_error = profile.apn.empty() ? CmeError::missing_apn : CmeError::ok;
    });
    if (again && profile.apn.empty())
        connection_.disconnect();
    else if (again)
        connection_.reconnect();
    signal_change();
    return CmeError::ok;
}

CmeError Modem::connect()
{
    Target target;
    CmeError error = find_target(Needs::nothing, target);
    if (error == CmeError::ok)
        error = data_refusal(target.status, target.state);
    with_local_state([&](LocalState &local) {
        local.last_error = error;
        auto_connect_ = false;
    });
    if (error == CmeError::ok && !is_up())
        connection_.connect();
    signal_change();
    return error;
}

CmeError Modem::disconnect()
{
    with_local_state([&](LocalState &local) {
        local.last_error = CmeError::ok;
        auto_connect_ = false;
    });
    if (is_up() || connection_.busy())
        connection_.disconnect();
    signal_change();
    return CmeError::ok;
}

CmeError Modem::connect_when_possible()
{
    with_local_state([this](LocalState &) { auto_connect_ = true; });
    upkeep_.wake();
    return CmeError::ok;
}

// The error of a connection that was called off meanwhile is not reported.
void Modem::dial()
{
    signal_change();
    Target target;
    CmeError error = find_target(Needs::nothing, target);
    Value settings;
    with_local_state([&](const LocalState &local) {
        settings = settings_of(local.data_profile, local.roaming);
    });
    if (error == CmeError::ok)
        error = call(target, simple, "Connect", settings, true).error;
    if (error == CmeError::ok)
        wait_for(report_limit, is_connected);
    else if (!connection_.superseded())
        with_local_state([&](LocalState &local) { local.last_error = error; });
}

// Of all bearers: one that a dial has left half-way, too.
void Modem::hang_up()
{
    signal_change();
    Target target;
    if (find_target(Needs::nothing, target) != CmeError::ok)
        return;
    call(target, simple, "Disconnect", Value(g_variant_new("(o)", no_object)));
    wait_for(report_limit, [](const ModemView &view) { return !is_connected(view); });
    status(); // notes the end while it is known to be wanted
}

} // namespace modem_manager
