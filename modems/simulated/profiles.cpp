#include "profiles.h"

#include "daemons/digits.h"

namespace sim
{

using namespace daemons;

namespace
{

bool is_apn(std::string_view text)
{
    constexpr std::string_view letters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-.";
    return text.find_first_not_of(letters) == std::string_view::npos;
}

} // namespace

Profiles::Profiles()
{
    profiles_[0] = {"IPV4V6", "ims"};
    profiles_[1] = {"IPV4V6", "admin.example"};
    profiles_[for_data - 1] = {"IPV4V6", "internet.example"};
    synchronize();
}

RetCode Profiles::set(std::string_view number, std::string_view type, std::string_view apn)
{
    const auto place = to_number(number);
    if (!place || *place < 1 || *place > most)
        return ret_incorrect_parameters;
    if (std::find(std::begin(pdp_types), std::end(pdp_types), type) == std::end(pdp_types) ||
        !is_apn(apn))
        return ret_incorrect_parameters;
    profiles_.at(static_cast<std::size_t>(*place) - 1) = {std::string(type), std::string(apn)};
    if (*place == for_data)
        synchronize();
    return ret_ok;
}

void Profiles::provision()
{
    profiles_[for_data - 1] = {"IPV4V6", "managed.example"};
}

} // namespace sim
