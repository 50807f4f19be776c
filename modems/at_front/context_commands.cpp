// Packet contexts, their profiles, and the data connection (3GPP TS 27.007, 10).
#include "command.h"
#include "contexts.h"
#include "daemons/pdp_type.h"

namespace at_front
{
namespace
{

using daemons::PdpProfile;
using simulated::Profiles;

// The number of a context, or nothing.
std::optional<int> context_number(const Call &call, std::size_t index)
{
    return call.given.number(index, 1, 1, Profiles::max_profiles);
}

PdpProfile stored(const Call &call, int number)
{
    return call.device.inspect(
        [number](const ModemState &state, Time) { return state.profiles.stored(number); });
}

std::string bit(bool value)
{
    return value ? "1" : "0";
}

Answer read_profiles(Call &call)
{
    Answer answer;
    for (int number = 1; number <= Profiles::max_profiles; ++number) {
        const PdpProfile profile = stored(call, number);
        if (!profile.apn.empty())
            answer.lines.push_back("+CGDCONT: " + std::to_string(number) + ",\"" +
                                   daemons::name_of(profile.type) + "\",\"" + profile.apn +
                                   R"(","",0,0)");
    }
    return answer;
}

// A number alone clears the profile.
Answer set_profile(Call &call)
{
    const auto number = context_number(call, 0);
    const std::string type = call.given.has(1) ? call.given.text(1) : "IP";
    const auto pdp_type = daemons::pdp_type_of(type);
    if (!number || !pdp_type)
        return incorrect;
    return ended(call.device.modem().set_profile(*number, {*pdp_type, call.given.text(2)}));
}

Answer read_activation(Call &call)
{
    Answer answer;
    const auto active = connected_context(call.device);
    for (int number = 1; number <= Profiles::max_profiles; ++number)
        if (!stored(call, number).apn.empty())
            answer.lines.push_back("+CGACT: " + std::to_string(number) + "," +
                                   bit(active == number));
    return answer;
}

Answer set_activation(Call &call)
{
    const auto on = call.given.number(0, 1, 0, 1), number = context_number(call, 1);
    if (!on || !number)
        return incorrect;
    return *on == 1 ? activate(call, *number) : deactivate(call, *number);
}

Answer read_attachment(Call &call)
{
    return line("+CGATT: " + bit(call.device.modem().status().packet_attached.value_or(false)));
}

Answer set_attachment(Call &call)
{
    const auto on = call.given.number(0, 1, 0, 1);
    return on ? ended(call.device.modem().set_packet_domain(*on == 1)) : incorrect;
}

Answer show_addresses(Call &call)
{
    const auto number = context_number(call, 0);
    if (!number)
        return incorrect;
    const std::string text = "+CGPADDR: " + std::to_string(*number);
    if (connected_context(call.device) != number)
        return line(text);
    const daemons::ModemStatus status = call.device.modem().status();
    std::string addresses;
    for (const std::string &address : {status.ipv4_address, status.ipv6_address})
        if (!address.empty())
            addresses += ",\"" + address + "\"";
    return line(text + addresses);
}

// The address with its mask, the gateway and the name server, as a static interface needs them.
Answer show_parameters(Call &call)
{
    constexpr int bearer = 5;
    const auto number = context_number(call, 0);
    if (!number)
        return incorrect;
    const daemons::ModemStatus status = call.device.modem().status();
    if (connected_context(call.device) != number)
        return ok;
    const std::string text = "+CGCONTRDP: " + std::to_string(*number) + "," +
                             std::to_string(bearer) + ",\"" + status.pdp_apn + "\"";
    if (status.ipv4_address.empty())
        return line(text);
    return line(text + ",\"" + status.ipv4_address + "." + ipv4_mask + "\",\"" + ipv4_gateway +
                "\",\"" + name_server + "\"");
}

Answer set_credentials(Call &call)
{
    const auto number = context_number(call, 0), kind = call.given.number(1, 0, 0, 3);
    if (!number || !kind)
        return incorrect;
    call.device.set_credentials(*number, {static_cast<daemons::Authentication>(*kind),
                                          call.given.text(2), call.given.text(3)});
    return ok;
}

Answer read_events(Call &call)
{
    return line("+CGEREP: " + std::to_string(call.session.packet_events) + ",0");
}

Answer set_events(Call &call)
{
    const auto mode = call.given.number(0, 0, 0, 2);
    if (!mode)
        return incorrect;
    call.session.packet_events = *mode;
    return ok;
}

constexpr const char *profile_ranges = R"((1-16),"IP",,,(0),(0)
(1-16),"PPP",,,(0),(0)
(1-16),"IPV6",,,(0),(0)
(1-16),"IPV4V6",,,(0),(0))";

// clang-format off
constexpr Command rows[] = {
    // name        test             read             set              execute
    {"+CGDCONT",   profile_ranges,  read_profiles,   set_profile,     nullptr},
    {"+CGACT",     "(0,1)",         read_activation, set_activation,  nullptr},
    {"+CGATT",     "(0,1)",         read_attachment, set_attachment,  nullptr},
    {"+CGPADDR",   "",              nullptr,         show_addresses,  nullptr},
    {"+CGCONTRDP", "",              nullptr,         show_parameters, nullptr},
    {"+CGAUTH",    "(1-16),(0-3)",  nullptr,         set_credentials, nullptr},
    {"+UAUTHREQ",  "(1-16),(0-3)",  nullptr,         set_credentials, nullptr},
    {"+CGEREP",    "(0-2),(0)",     read_events,     set_events,      nullptr},
};
// clang-format on

} // namespace

Commands context_commands()
{
    return rows;
}

} // namespace at_front
