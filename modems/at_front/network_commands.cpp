// Registration and the choice of an operator (3GPP TS 27.007, 7).
#include "command.h"
#include "registration.h"

namespace at_front
{
namespace
{

using daemons::Operator;
using daemons::Technology;
using simulated::Needs;

int &level_of(Session &session, Domain domain)
{
    return domain == Domain::circuits  ? session.creg
           : domain == Domain::packets ? session.cgreg
                                       : session.cereg;
}

template <Domain domain>
Answer read_registration(Call &call)
{
    const int level = level_of(call.session, domain);
    return line(std::string(name_of(domain)) + ": " + std::to_string(level) + "," +
                registration_text(domain, call.device.modem().status(), level));
}

template <Domain domain>
Answer set_registration(Call &call)
{
    const auto level = call.given.number(0, 0, 0, 2);
    if (!level)
        return incorrect;
    level_of(call.session, domain) = *level;
    return ok;
}

std::string quoted(const std::string &text)
{
    return '"' + text + '"';
}

std::string technology_of(const Operator &row)
{
    return row.technology ? std::to_string(static_cast<int>(*row.technology)) : "";
}

std::string text_of(const Operator &row)
{
    return "(" + std::to_string(static_cast<int>(row.state)) + "," + quoted(row.long_name) + "," +
           quoted(row.short_name) + "," + quoted(row.plmn) + "," + technology_of(row) + ")";
}

std::vector<Operator> operators(Call &call)
{
    return call.device.inspect(
        [](const ModemState &state, Time) { return state.network.operators(); });
}

// A search takes seconds; another character from the terminal calls it off.
Answer search(Call &call)
{
    const CmeError refusal =
        call.device.change([](ModemState &state, Time now) { return state.begin_search(now); });
    if (refusal != CmeError::ok)
        return ended(refusal);
    const auto done = [&] {
        return call.device.inspect(
            [](const ModemState &state, Time) { return !state.searching(); });
    };
    constexpr std::chrono::minutes limit{3};
    if (!call.device.wait_until(done, limit, call.called_off))
        return error;
    const CmeError result =
        call.device.inspect([](const ModemState &state, Time) { return state.search_result; });
    if (result != CmeError::ok)
        return ended(result);
    std::string list = "+COPS: ";
    for (const Operator &each : operators(call))
        list += text_of(each) + ",";
    return line(list + ",(0,1,2,3,4),(0,1,2)");
}

Answer read_operator(Call &call)
{
    const daemons::ModemStatus status = call.device.modem().status();
    const int format = call.session.operator_format;
    if (call.device.inspect(
            [](const ModemState &state, Time) { return state.network.deregistered(); }))
        return line("+COPS: 2");
    const std::string mode = status.manual_selection.value_or(false) ? "1" : "0";
    if (!status.technology)
        return line("+COPS: " + mode);
    const std::string numeric = status.cell.mcc + status.cell.mnc;
    const std::string name = format == 0   ? status.operator_long
                             : format == 1 ? status.operator_short
                                           : numeric;
    return line("+COPS: " + mode + "," + std::to_string(format) + "," + quoted(name) + "," +
                std::to_string(static_cast<int>(*status.technology)));
}

// The code of an operator that is named as the format has it.
std::string plmn_of(Call &call, int format, const std::string &name)
{
    if (format == 2)
        return name;
    for (const Operator &each : operators(call))
        if (name == (format == 0 ? each.long_name : each.short_name))
            return each.plmn;
    return "";
}

CmeError select(Call &call, int mode)
{
    simulated::Modem &modem = call.device.modem();
    if (mode == 0)
        return modem.select_automatically();
    const auto format = call.given.number(1, 0, 0, 2);
    const auto technology = call.given.number(3);
    if (!format || (call.given.has(3) && !technology))
        return CmeError::incorrect_parameters;
    const CmeError result = modem.select_operator(
        plmn_of(call, *format, call.given.text(2)),
        technology ? std::optional(static_cast<Technology>(*technology)) : std::nullopt);
    return mode == 4 && result != CmeError::ok ? modem.select_automatically() : result;
}

// The answer comes when the modem is registered, or when nothing more will happen by itself.
Answer wait_for_registration(Call &call)
{
    const auto settled = [&] {
        return call.device.inspect(
            [](const ModemState &state, Time) { return !state.network.next_deadline(); });
    };
    constexpr std::chrono::minutes limit{3};
    if (!call.device.wait_until(settled, limit, call.called_off))
        return error;
    return ended(call.device.inspect(
        [](const ModemState &state, Time) { return state.refusal(Needs::network); }));
}

// Without a change of the choice there is nothing to wait for: the network is there or not.
Answer set_operator(Call &call)
{
    const auto mode = call.given.number(0);
    if (!mode)
        return incorrect;
    if (*mode == 2)
        return ended(call.device.change([](ModemState &state, Time) {
            state.network.deregister();
            return CmeError::ok;
        }));
    if (call.given.has(1)) {
        const auto format = call.given.number(1, 0, 0, 2);
        if (!format)
            return incorrect;
        call.session.operator_format = *format;
    }
    if (*mode == 3)
        return ok;
    if (*mode != 0 && *mode != 1 && *mode != 4)
        return incorrect;
    const CmeError refusal = call.device.inspect(
        [](const ModemState &state, Time) { return state.refusal(Needs::radio); });
    const CmeError result = refusal == CmeError::ok ? select(call, *mode) : refusal;
    return result == CmeError::ok ? wait_for_registration(call) : ended(result);
}

// clang-format off
constexpr Command rows[] = {
    // name     test    read                                  set                                  execute
    {"+CREG",  "(0-2)", read_registration<Domain::circuits>, set_registration<Domain::circuits>, nullptr},
    {"+CGREG", "(0-2)", read_registration<Domain::packets>,  set_registration<Domain::packets>,  nullptr},
    {"+CEREG", "(0-2)", read_registration<Domain::lte>,      set_registration<Domain::lte>,      nullptr},
    {"+COPS",  nullptr, read_operator,                       set_operator,                       nullptr, search},
    {"+WS46",  "(12,22,25,28,29,30,31)", nullptr,            nullptr,                            nullptr},
};
// clang-format on

} // namespace

Commands network_commands()
{
    return rows;
}

} // namespace at_front
