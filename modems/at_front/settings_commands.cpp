// How a port answers, and what the modem is told about its terminal.
#include "command.h"

namespace at_front
{
namespace
{

constexpr std::chrono::seconds down_time{2}; // of a reset

Answer accept(Call &)
{
    return ok;
}

Answer set_echo(Call &call)
{
    return set_flag(call, call.session.echo);
}

Answer set_verbose(Call &call)
{
    return set_flag(call, call.session.verbose);
}

Answer set_quiet(Call &call)
{
    return set_flag(call, call.session.quiet);
}

Answer reset(Call &call)
{
    call.session = {};
    return ok;
}

Answer read_error_mode(Call &call)
{
    return line("+CMEE: " + std::to_string(call.session.error_mode));
}

Answer set_error_mode(Call &call)
{
    const auto mode = call.given.number(0, 0, 0, 2);
    if (!mode)
        return incorrect;
    call.session.error_mode = *mode;
    return ok;
}

Answer read_character_set(Call &call)
{
    return line("+CSCS: \"" + call.session.character_set + "\"");
}

Answer set_character_set(Call &call)
{
    const std::string name = call.given.text(0);
    if (name != "IRA" && name != "GSM" && name != "UCS2")
        return incorrect;
    call.session.character_set = name;
    return ok;
}

Answer read_functionality(Call &call)
{
    const int level =
        call.device.inspect([](const ModemState &state, Time) { return state.functionality; });
    return line("+CFUN: " + std::to_string(level));
}

// 16 resets the modem, as 1 with a reset does.
Answer set_functionality(Call &call)
{
    constexpr int reset_level = 16;
    const auto level = call.given.number(0), again = call.given.number(1, 0, 0, 1);
    if (!level || !again)
        return incorrect;
    if (*level != reset_level && *again == 0)
        return ended(call.device.modem().set_functionality(*level));
    if (*level != reset_level && *level != 1)
        return incorrect;
    call.device.change([](ModemState &state, Time now) {
        state.crash(down_time, now);
        return CmeError::ok;
    });
    return ok;
}

// clang-format off
constexpr Command rows[] = {
    // name    test                    read                    set                    execute
    {"E",     nullptr,                nullptr,                nullptr,               set_echo},
    {"V",     nullptr,                nullptr,                nullptr,               set_verbose},
    {"Q",     nullptr,                nullptr,                nullptr,               set_quiet},
    {"Z",     nullptr,                nullptr,                nullptr,               reset},
    {"&F",    nullptr,                nullptr,                nullptr,               reset},
    {"&C",    nullptr,                nullptr,                nullptr,               accept},
    {"&D",    nullptr,                nullptr,                nullptr,               accept},
    {"&K",    nullptr,                nullptr,                nullptr,               accept},
    {"&W",    nullptr,                nullptr,                nullptr,               accept},
    {"X",     nullptr,                nullptr,                nullptr,               accept},
    {"L",     nullptr,                nullptr,                nullptr,               accept},
    {"M",     nullptr,                nullptr,                nullptr,               accept},
    {"S0",    nullptr,                nullptr,                accept,                nullptr},
    {"S3",    nullptr,                nullptr,                accept,                nullptr},
    {"S4",    nullptr,                nullptr,                accept,                nullptr},
    {"S7",    nullptr,                nullptr,                accept,                nullptr},
    {"+IFC",  "(0-2),(0-2)",          nullptr,                accept,                nullptr},
    {"+IPR",  "(),(0,115200)",        nullptr,                accept,                nullptr},
    {"+CMEE", "(0-2)",                read_error_mode,        set_error_mode,        nullptr},
    {"+CSCS", R"(("IRA","GSM","UCS2"))", read_character_set,  set_character_set,     nullptr},
    {"+CFUN", "(0,1,4,16),(0,1)",     read_functionality,     set_functionality,     nullptr},
};
// clang-format on

} // namespace

Commands settings_commands()
{
    return rows;
}

} // namespace at_front
