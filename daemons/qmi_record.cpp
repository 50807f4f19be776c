#include "qmi_record.h"

#include "cmif/cmif.h"
#include "printable.h"

#include <cstddef>
#include <cstring>

namespace sim
{
namespace
{

struct WireProfile {
    char apn[41];
    char user[129];
    char password[129];
    char auth[4];
    char pdp[4];
    char family[4];
    char unused;
};
static_assert(offsetof(WireProfile, auth) == 299 && sizeof(WireProfile) == CMIF_QMI_PAYLOAD);

template <std::size_t size>
bool take_text(const char (&field)[size], std::string &text)
{
    const std::size_t length = strnlen(field, size);
    text.assign(field, length);
    return length < size;
}

// One digit up to `most`, and its end.
bool take_digit(const char (&field)[4], char most, int &number)
{
    number = field[0] - '0';
    return field[0] >= '0' && field[0] <= most && field[1] == '\0';
}

} // namespace

std::optional<ConnectionProfile> decode_profile(std::string_view payload)
{
    WireProfile wire;
    if (payload.size() != sizeof wire)
        return std::nullopt;
    std::memcpy(&wire, payload.data(), sizeof wire);

    ConnectionProfile profile;
    if (take_text(wire.apn, profile.apn) && take_text(wire.user, profile.user) &&
        take_text(wire.password, profile.password) && take_digit(wire.auth, '3', profile.auth) &&
        take_digit(wire.pdp, '3', profile.pdp) && take_digit(wire.family, '1', profile.family))
        return profile;
    return std::nullopt;
}

// A malformed record gives nothing to the log: parts of the password may lie anywhere in it.
std::string describe_profile(std::string_view payload)
{
    const std::optional<ConnectionProfile> profile = decode_profile(payload);
    if (!profile)
        return "(malformed)";
    const char *password = profile->password.empty() ? "" : "****";
    return "apn=\"" + printable(profile->apn) + "\" user=\"" + printable(profile->user) +
           "\" password=\"" + password + "\" auth=" + std::to_string(profile->auth) +
           " pdp=" + std::to_string(profile->pdp) + " family=" + std::to_string(profile->family);
}

} // namespace sim
