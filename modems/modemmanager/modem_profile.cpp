// The modem's own connection profiles.
#include "at_commands.h"
#include "daemons/digits.h"
#include "daemons/pdp_type.h"
#include "ip_type.h"
#include "modem.h"

namespace modem_manager
{
namespace
{

using daemons::PdpProfile;
using daemons::PdpType;

constexpr int data_profile = 3; // the one whose values are published
constexpr int max_profiles = 16;

Value settings_of(int number, const PdpProfile &profile)
{
    Entries entries;
    entries.add("profile-id", g_variant_new_int32(number));
    entries.add("apn", profile.apn);
    entries.add("ip-type", ip_family_of(profile.type, daemons::IpFamily::ipv4));
    return entries.tuple();
}

std::optional<PdpProfile> profile_in(const Value &list)
{
    for (const Value &each : list.items()) {
        const Dictionary profile = each.dictionary();
        if (find(profile, "profile-id").number() != data_profile)
            continue;
        const auto family = static_cast<unsigned>(find(profile, "ip-type").number().value_or(0));
        return PdpProfile{pdp_type_of(family).value_or(PdpType::ip), find(profile, "apn").text()};
    }
    return std::nullopt;
}

// The text between two quotes, the first ones being number 0.
std::string quoted_field(const std::string &line, int number)
{
    std::size_t start = line.find('"');
    for (int quotes = 2 * number; quotes > 0 && start != std::string::npos; --quotes)
        start = line.find('"', start + 1);
    if (start == std::string::npos)
        return "";
    return line.substr(start + 1, line.find('"', start + 1) - start - 1);
}

// +CGDCONT: 3,"IPV4V6","internet.example",...
std::optional<PdpProfile> profile_in(const AtAnswer &answer)
{
    const std::string beginning = "+CGDCONT: " + std::to_string(data_profile) + ",";
    for (const std::string &line : answer.lines)
        if (line.starts_with(beginning))
            if (const auto type = daemons::pdp_type_of(quoted_field(line, 0)))
                return PdpProfile{*type, quoted_field(line, 1)};
    return std::nullopt;
}

} // namespace

// ModemManager knows no PPP type.
CmeError Modem::set_profile(int number, const PdpProfile &profile)
{
    if (number < 1 || number > max_profiles || !is_apn(profile.apn))
        return CmeError::incorrect_parameters;
    return change(Needs::nothing, [&](const Target &target) {
        CmeError error = CmeError::not_supported;
        if (profile.type != PdpType::ppp)
            error = call(target, profiles, "Set", settings_of(number, profile)).error;
        if (error == CmeError::not_supported)
            error = at_port_.send(set_profile_command(number, profile)).error;
        if (error == CmeError::ok && number == data_profile)
            with_local_state([&](LocalState &local) { local.profile = profile; });
        return error;
    });
}

CmeError Modem::synchronize_profile()
{
    return change(Needs::nothing, [&](const Target &target) {
        const Reply list = call(target, profiles, "List");
        std::optional<PdpProfile> found = profile_in(list.value.item(0));
        CmeError error = list.error;
        if (error == CmeError::not_supported) {
            const AtAnswer answer = at_port_.send("+CGDCONT?");
            error = answer.error;
            found = profile_in(answer);
        }
        if (error == CmeError::ok)
            with_local_state([&](LocalState &local) { local.profile = found; });
        return error;
    });
}

} // namespace modem_manager
