// The SIM: its codes, its locks and what it stores (3GPP TS 27.007, 8).
#include "command.h"
#include "sim_files.h"

namespace at_front
{
namespace
{

using daemons::SimStatus;
using simulated::Needs;

CmeError refusal(Call &call, Needs needs)
{
    return call.device.inspect(
        [needs](const ModemState &state, Time) { return state.refusal(needs); });
}

Answer read_pin(Call &call)
{
    if (const CmeError reason = refusal(call, Needs::sim); reason != CmeError::ok)
        return ended(reason);
    const SimStatus status =
        call.device.inspect([](const ModemState &state, Time) { return state.sim_status(); });
    switch (status) {
    case SimStatus::pin_required:
        return line("+CPIN: SIM PIN");
    case SimStatus::puk_required:
        return line("+CPIN: SIM PUK");
    case SimStatus::network_locked:
        return line("+CPIN: PH-NET PIN");
    case SimStatus::permanently_blocked:
        return ended(CmeError::sim_failure);
    default:
        return line("+CPIN: READY");
    }
}

// With one code, what +CPIN? asks for; with two, a PUK and the new PIN.
Answer set_pin(Call &call)
{
    const std::string code = call.given.text(0), new_pin = call.given.text(1);
    if (call.given.count() > 1)
        return ended(call.device.modem().enter_puk(code, new_pin));
    if (const CmeError reason = refusal(call, Needs::sim); reason != CmeError::ok)
        return ended(reason);
    const SimStatus status =
        call.device.inspect([](const ModemState &state, Time) { return state.sim_status(); });
    if (status == SimStatus::network_locked)
        return ended(call.device.modem().unlock_network(code));
    if (status == SimStatus::ready)
        return ended(CmeError::not_allowed);
    return ended(call.device.modem().enter_pin(code));
}

Answer lock_sim(Call &call, int mode)
{
    if (mode != 2)
        return ended(call.device.modem().set_pin_enabled(mode == 1, call.given.text(2)));
    if (const CmeError reason = refusal(call, Needs::sim); reason != CmeError::ok)
        return ended(reason);
    const bool enabled =
        call.device.inspect([](const ModemState &state, Time) { return state.sim.pin1.enabled(); });
    return line("+CLCK: " + std::to_string(static_cast<int>(enabled)));
}

Answer lock_network(Call &call, int mode)
{
    if (mode == 1)
        return ended(call.device.modem().lock_network("", call.given.text(2)));
    if (mode == 0)
        return ended(call.device.modem().unlock_network(call.given.text(2)));
    const bool locked =
        call.device.inspect([](const ModemState &state, Time) { return state.lock.locked(); });
    return line("+CLCK: " + std::to_string(static_cast<int>(locked)));
}

Answer set_lock(Call &call)
{
    const std::string facility = call.given.text(0);
    const auto mode = call.given.number(1);
    if (!mode || *mode < 0 || *mode > 2)
        return incorrect;
    if (facility == "SC")
        return lock_sim(call, *mode);
    if (facility == "PN")
        return lock_network(call, *mode);
    return ended(CmeError::not_supported);
}

Answer set_password(Call &call)
{
    if (call.given.text(0) != "SC")
        return ended(CmeError::not_supported);
    return ended(call.device.modem().change_pin(call.given.text(1), call.given.text(2)));
}

Answer show_imsi(Call &call)
{
    if (const CmeError reason = refusal(call, Needs::unlocked_sim); reason != CmeError::ok)
        return ended(reason);
    return line(call.device.inspect(
        [](const ModemState &state, Time) { return std::string(state.sim.identity.imsi); }));
}

Answer show_number(Call &call)
{
    if (const CmeError reason = refusal(call, Needs::unlocked_sim); reason != CmeError::ok)
        return ended(reason);
    return line("+CNUM: ,\"" + call.device.inspect([](const ModemState &state, Time) {
        return std::string(state.sim.identity.subscriber_number);
    }) + "\",145");
}

Answer show_iccid(Call &call)
{
    if (const CmeError reason = refusal(call, Needs::sim); reason != CmeError::ok)
        return ended(reason);
    return line("+CCID: " + call.device.inspect([](const ModemState &state, Time) {
        return std::string(state.sim.identity.iccid);
    }));
}

// "READ BINARY" of the elementary files that a modem manager looks at.
Answer access_file(Call &call)
{
    constexpr int read_binary = 176;
    const auto command = call.given.number(0), file = call.given.number(1);
    if (!command || !file)
        return incorrect;
    if (const CmeError reason = refusal(call, Needs::sim); reason != CmeError::ok)
        return ended(reason);
    const std::string content = call.device.inspect(
        [&](const ModemState &state, Time) { return sim_file(*file, state.sim.identity); });
    if (*command != read_binary || content.empty())
        return line("+CRSM: 106,130,\"\""); // file not found
    return line("+CRSM: 144,0,\"" + content + "\"");
}

// clang-format off
constexpr Command rows[] = {
    // name    test                     read      set           execute
    {"+CPIN", "",                      read_pin, set_pin,      nullptr},
    {"+CLCK", R"(("SC","PN"))",        nullptr,  set_lock,     nullptr},
    {"+CPWD", R"(("SC",8))",           nullptr,  set_password, nullptr},
    {"+CIMI", "",                      nullptr,  nullptr,      show_imsi},
    {"+CNUM", "",                      nullptr,  nullptr,      show_number},
    {"+CCID", "",                      nullptr,  nullptr,      show_iccid},
    {"+CRSM", "",                      nullptr,  access_file,  nullptr},
};
// clang-format on

} // namespace

Commands sim_commands()
{
    return rows;
}

} // namespace at_front
