#include "network_lock.h"

#include "daemons/digits.h"

namespace simulated
{

using namespace daemons;

// Wrong keys are counted like wrong PUKs, but nothing restores a used-up counter.
CmeError NetworkLock::compare(std::string_view key)
{
    if (!is_digits(key, 8, 16))
        return CmeError::incorrect_parameters;
    if (attempts_ == 0)
        return CmeError::not_allowed;
    if (key == control_key) {
        attempts_ = max_attempts;
        return CmeError::ok;
    }
    --attempts_;
    return CmeError::incorrect_password;
}

CmeError NetworkLock::lock(std::string_view network, std::string_view key)
{
    if (!is_plmn_code(network))
        return CmeError::incorrect_parameters;
    const CmeError error = compare(key);
    if (error == CmeError::ok)
        bind(network);
    return error;
}

void NetworkLock::bind(std::string_view network)
{
    locked_ = true;
    network_ = network;
}

CmeError NetworkLock::unlock(std::string_view key)
{
    if (!locked_)
        return CmeError::not_allowed;
    const CmeError error = compare(key);
    if (error == CmeError::ok)
        locked_ = false;
    return error;
}

} // namespace simulated
