// The SIM card, and the modem's lock to a network.
#include "at_commands.h"
#include "daemons/digits.h"
#include "modem.h"

namespace modem_manager
{
namespace
{

using namespace std::chrono_literals;
using daemons::is_pin;
using daemons::is_puk;
using daemons::SimStatus;

// ModemManager starts the modem again, in a sense, when its SIM is unlocked or blocked.
constexpr auto settling_limit = 10s;

GVariant *text(std::string_view value)
{
    return g_variant_new_string(std::string(value).c_str());
}

Value texts(std::string_view one, std::string_view other)
{
    GVariant *const both[] = {text(one), text(other)};
    return Value(g_variant_new_tuple(both, std::size(both)));
}

Value text_and_flag(std::string_view value, bool flag)
{
    GVariant *const both[] = {text(value), g_variant_new_boolean(flag)};
    return Value(g_variant_new_tuple(both, std::size(both)));
}

Value one_text(std::string_view value)
{
    GVariant *const all[] = {text(value)};
    return Value(g_variant_new_tuple(all, std::size(all)));
}

} // namespace

// A wrong code changes the attempts left, and may block the SIM.
CmeError Modem::sim_call(const Target &target, const char *method, Value arguments)
{
    if (target.sim.empty())
        return CmeError::sim_not_inserted;
    const CmeError error =
        tree_.bus().call({target.sim, sim_card, method, std::move(arguments), true}).error;
    tree_.reload(target.path, modem);
    tree_.reload(target.path, modem_3gpp);
    if (error == CmeError::sim_puk_required)
        wait_for(settling_limit,
                 [](const ModemView &view) { return view.lock() == lock::sim_puk; });
    return error;
}

CmeError Modem::enter_pin(std::string_view pin)
{
    return change(Needs::sim, [&](const Target &target) {
        if (target.status.sim == SimStatus::puk_required)
            return CmeError::sim_puk_required;
        if (target.status.sim != SimStatus::pin_required)
            return CmeError::not_allowed;
        if (!is_pin(pin))
            return CmeError::incorrect_parameters;
        const CmeError error = sim_call(target, "SendPin", one_text(pin));
        if (error == CmeError::ok)
            wait_for(settling_limit, [](const ModemView &view) {
                return view.state() != state::locked && view.lock() != lock::sim_pin;
            });
        return error;
    });
}

CmeError Modem::enter_puk(std::string_view puk, std::string_view new_pin)
{
    return change(Needs::sim, [&](const Target &target) {
        if (target.status.sim == SimStatus::permanently_blocked)
            return CmeError::sim_failure;
        if (target.status.sim != SimStatus::puk_required)
            return CmeError::not_allowed;
        if (!is_puk(puk) || !is_pin(new_pin))
            return CmeError::incorrect_parameters;
        const CmeError error = sim_call(target, "SendPuk", texts(puk, new_pin));
        if (error == CmeError::ok)
            wait_for(settling_limit, [](const ModemView &view) {
                return view.state() != state::locked && view.lock() != lock::sim_puk;
            });
        return error;
    });
}

CmeError Modem::change_pin(std::string_view old_pin, std::string_view new_pin)
{
    return change(Needs::unlocked_sim, [&](const Target &target) {
        if (!is_pin(old_pin) || !is_pin(new_pin))
            return CmeError::incorrect_parameters;
        if (target.status.pin_enabled == false)
            return CmeError::not_allowed;
        return sim_call(target, "ChangePin", texts(old_pin, new_pin));
    });
}

CmeError Modem::set_pin_enabled(bool enabled, std::string_view pin)
{
    return change(Needs::unlocked_sim, [&](const Target &target) {
        if (!is_pin(pin))
            return CmeError::incorrect_parameters;
        if (target.status.pin_enabled == enabled)
            return CmeError::not_allowed;
        const CmeError error = sim_call(target, "EnablePin", text_and_flag(pin, enabled));
        if (error == CmeError::ok)
            wait_for(settling_limit, [&](const ModemView &view) {
                const bool on =
                    (view.flags(modem_3gpp, "EnabledFacilityLocks") & facility::sim) != 0;
                return on == enabled;
            });
        return error;
    });
}

// AT+CLCK takes no network: it is that of the SIM which is in.
CmeError Modem::lock_network(std::string_view plmn, std::string_view key)
{
    return change(Needs::unlocked_sim, [&](const Target &target) {
        const std::string home = tree_.read([&](const Objects &objects) {
            return ModemView(objects, target.path).sim("OperatorIdentifier").text();
        });
        if (!is_control_key(key))
            return CmeError::incorrect_parameters;
        if (!plmn.empty() && plmn != home)
            return CmeError::not_supported;
        return at_port_.send(lock_network_command(key), true).error;
    });
}

// Each wrong key counts: the port is asked only when ModemManager has not asked the modem.
CmeError Modem::unlock_network(std::string_view key)
{
    return change(Needs::unlocked_sim, [&](const Target &target) {
        if (!is_control_key(key))
            return CmeError::incorrect_parameters;
        GVariant *const request[] = {
            g_variant_new("(us)", facility::network, std::string(key).c_str())};
        const CmeError error = call(target, modem_3gpp, "DisableFacilityLock",
                                    Value(g_variant_new_tuple(request, 1)), true)
                                   .error;
        if (error != CmeError::not_supported || !at_port_)
            return error;
        const std::string vendor = tree_.read([&](const Objects &objects) {
            return ModemView(objects, target.path).get("Manufacturer").text();
        });
        return at_port_.send(unlock_network_command(vendor, key), true).error;
    });
}

} // namespace modem_manager
