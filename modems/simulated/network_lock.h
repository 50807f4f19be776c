// Network personalization: binds the modem to the SIMs of one network (3GPP TS 22.022).
#ifndef MODEMS_SIMULATED_NETWORK_LOCK_H
#define MODEMS_SIMULATED_NETWORK_LOCK_H

#include "daemons/cme_error.h"

#include <string>
#include <string_view>

namespace simulated
{

using daemons::CmeError;

class NetworkLock
{
public:
    static constexpr const char *control_key = "11223344";
    static constexpr int max_attempts = 10;

    CmeError lock(std::string_view network, std::string_view key);
    CmeError unlock(std::string_view key);

    // As the maker does it, without a key.
    void bind(std::string_view network);
    void release() { locked_ = false; }

    bool locked() const { return locked_; }
    bool rejects(std::string_view sim_network) const { return locked_ && network_ != sim_network; }
    int attempts() const { return attempts_; }

private:
    CmeError compare(std::string_view key);

    bool locked_ = false;
    std::string network_;
    int attempts_ = max_attempts;
};

} // namespace simulated

#endif
