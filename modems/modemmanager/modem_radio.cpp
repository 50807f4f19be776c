// The modem itself: its functionality, clock, reset and management.
#include "at_commands.h"
#include "modem.h"

namespace modem_manager
{
namespace
{

using namespace std::chrono_literals;

// Carriers have codes of their own; this one stands for none.
constexpr const char *reset_code = "000000";

Value flag(bool on)
{
    return Value(g_variant_new("(b)", on));
}

} // namespace

// ModemManager has one power state without radio, and enters it from a disabled modem.
CmeError Modem::power_down(const Target &target)
{
    CmeError error = CmeError::ok;
    if (target.state > state::disabling)
        error = call(target, modem, "Enable", flag(false)).error;
    if (error == CmeError::ok)
        error = call(target, modem, "SetPowerState", Value(g_variant_new("(u)", power::low))).error;
    return error;
}

// A modem that is locked is enabled after the PIN.
CmeError Modem::power_up(const Target &target)
{
    const auto power = tree_.read([&](const Objects &objects) {
        return ModemView(objects, target.path).flags(modem, "PowerState");
    });
    CmeError error = CmeError::ok;
    if (power == power::low || power == power::off)
        error = call(target, modem, "SetPowerState", Value(g_variant_new("(u)", power::on))).error;
    if (error == CmeError::ok && target.state == state::disabled)
        error = call(target, modem, "Enable", flag(true)).error;
    return error;
}

// What is wanted is known before it is done: a modem that is just disabled is not to be enabled.
CmeError Modem::set_functionality(int level)
{
    if (level != 0 && level != 1 && level != 4)
        return CmeError::incorrect_parameters;
    return change(Needs::nothing, [&](const Target &target) {
        int before = level;
        with_local_state([&](LocalState &local) { std::swap(before, local.functionality); });
        const CmeError error = level == 1 ? power_up(target) : power_down(target);
        if (error != CmeError::ok)
            with_local_state([&](LocalState &local) { local.functionality = before; });
        return error;
    });
}

// The network's time would soon replace ours; a modem that knows no such setting keeps ours anyway.
CmeError Modem::set_time_zone(int quarter_hours)
{
    return change(Needs::nothing, [&](const Target &) {
        at_port_.send("+CTZU=0");
        return at_port_.send(set_clock_command(std::time(nullptr), quarter_hours)).error;
    });
}

CmeError Modem::factory_reset()
{
    return change(Needs::nothing, [&](const Target &target) {
        const CmeError error =
            call(target, modem, "FactoryReset", Value(g_variant_new("(s)", reset_code))).error;
        if (error == CmeError::ok)
            with_local_state([](LocalState &local) { local = {}; });
        return error;
    });
}

CmeError Modem::start_device_management()
{
    return change(Needs::network, [&](const Target &target) {
        const Reply setup = call(target, oma, "Setup",
                                 Value(g_variant_new("(u)", oma_feature::device_provisioning)));
        if (setup.error != CmeError::ok)
            return setup.error;
        return call(target, oma, "StartClientInitiatedSession",
                    Value(g_variant_new("(u)", oma_session::device_configure)))
            .error;
    });
}

} // namespace modem_manager
