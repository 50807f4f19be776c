#include "qmi_record.h"

#include "cmif/cmif.h"
#include "printable.h"

#include <cstring>

namespace daemons
{
namespace
{

static_assert(sizeof(qmi_profile_payload) == CMIF_QMI_PAYLOAD);

template <std::size_t size>
bool take_text(const char (&field)[size], std::string &text)
{
    const std::size_t length = strnlen(field, size);
    text.assign(field, length);
    return length < size;
}

// One digit up to that of `max`, and a NUL.
template <class Enumeration>
bool take_digit(const char (&field)[4], Enumeration max, Enumeration &value)
{
    const int number = field[0] - '0';
    value = static_cast<Enumeration>(number);
    return number >= 0 && number <= static_cast<int>(max) && field[1] == '\0';
}

template <class Enumeration>
std::string digit(Enumeration value)
{
    return std::to_string(static_cast<int>(value));
}

} // namespace

std::optional<DataProfile> decode_profile(std::string_view payload)
{
    qmi_profile_payload wire;
    if (payload.size() != sizeof wire)
        return std::nullopt;
    std::memcpy(&wire, payload.data(), sizeof wire);

    DataProfile profile;
    if (take_text(wire.apn, profile.apn) && take_text(wire.user, profile.user) &&
        take_text(wire.password, profile.password) &&
        take_digit(wire.auth, Authentication::pap_or_chap, profile.authentication) &&
        take_digit(wire.pdp, PdpType::ipv4v6, profile.pdp_type) &&
        take_digit(wire.curIpFamily, IpFamily::ipv6, profile.family))
        return profile;
    return std::nullopt;
}

// Nothing of a malformed record goes to the log: parts of the password may lie anywhere in it.
std::string describe_profile(std::string_view payload)
{
    const std::optional<DataProfile> profile = decode_profile(payload);
    if (!profile)
        return "(malformed)";
    const char *password = profile->password.empty() ? "" : "****";
    return "apn=\"" + printable(profile->apn) + "\" user=\"" + printable(profile->user) +
           "\" password=\"" + password + "\" auth=" + digit(profile->authentication) +
           " pdp=" + digit(profile->pdp_type) + " family=" + digit(profile->family);
}

} // namespace daemons
