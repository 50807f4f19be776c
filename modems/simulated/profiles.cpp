#include "profiles.h"

#include <string_view>

namespace simulated
{
namespace
{

using daemons::PdpType;

bool is_apn(std::string_view text)
{
    constexpr std::string_view letters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-.";
    return text.find_first_not_of(letters) == std::string_view::npos;
}

} // namespace

Profiles::Profiles()
{
    at(1) = {PdpType::ipv4v6, "ims"};
    at(2) = {PdpType::ipv4v6, "admin.example"};
    at(data_profile) = {PdpType::ipv4v6, "internet.example"};
    synchronize();
}

CmeError Profiles::set(int number, const PdpProfile &profile)
{
    if (number < 1 || number > max_profiles || !is_apn(profile.apn))
        return CmeError::incorrect_parameters;
    at(number) = profile;
    if (number == data_profile)
        synchronize();
    return CmeError::ok;
}

void Profiles::provision()
{
    at(data_profile) = {PdpType::ipv4v6, "managed.example"};
}

} // namespace simulated
