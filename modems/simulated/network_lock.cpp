#include "network_lock.h"

#include "daemons/digits.h"

namespace sim
{

using namespace daemons;

// Wrong keys are counted like wrong PUKs, but nothing gives a used-up counter back.
RetCode NetworkLock::compare(std::string_view key)
{
    if (!is_digits(key, 8, 16))
        return ret_incorrect_parameters;
    if (tries_ == 0)
        return ret_not_allowed;
    if (key == control_key) {
        tries_ = most_tries;
        return ret_ok;
    }
    --tries_;
    return ret_incorrect_password;
}

RetCode NetworkLock::set(std::string_view facility, std::string_view mode, std::string_view network,
                         std::string_view key, std::string_view home)
{
    if (facility != "PN")
        return ret_not_supported;
    if (mode == "0")
        return unlock(key);
    if (mode != "1")
        return ret_incorrect_parameters;
    if (!network.empty() && !is_plmn_code(network))
        return ret_incorrect_parameters;
    const RetCode code = compare(key);
    if (code != ret_ok)
        return code;
    locked_ = true;
    network_ = network.empty() ? home : network;
    return ret_ok;
}

RetCode NetworkLock::unlock(std::string_view key)
{
    if (!locked_)
        return ret_not_allowed;
    const RetCode code = compare(key);
    if (code == ret_ok)
        locked_ = false;
    return code;
}

} // namespace sim
