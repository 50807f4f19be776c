// Network personalization: binds the modem to the SIMs of one network (3GPP TS 22.022).
#ifndef MODEMS_SIMULATED_NETWORK_LOCK_H
#define MODEMS_SIMULATED_NETWORK_LOCK_H

#include "daemons/ret_code.h"

#include <string>
#include <string_view>

namespace sim
{

class NetworkLock
{
public:
    static constexpr const char *control_key = "11223344";
    static constexpr int most_tries = 10;

    // `facility` is "PN"; `mode` "1" locks and "0" unlocks; `network` is a numeric code, or empty
    // for `home`, the network of the SIM that is in.
    RetCode set(std::string_view facility, std::string_view mode, std::string_view network,
                std::string_view key, std::string_view home);

    RetCode unlock(std::string_view key);

    bool shuts_out(std::string_view home) const { return locked_ && network_ != home; }
    int tries() const { return tries_; }

private:
    RetCode compare(std::string_view key);

    bool locked_ = false;
    std::string network_;
    int tries_ = most_tries;
};

} // namespace sim

#endif
