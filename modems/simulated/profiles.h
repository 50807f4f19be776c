// The modem's connection profiles (PDP contexts), as AT+CGDCONT keeps them.
#ifndef MODEMS_SIMULATED_PROFILES_H
#define MODEMS_SIMULATED_PROFILES_H

#include "daemons/ret_code.h"

#include <array>
#include <string>
#include <string_view>

namespace sim
{

// In the order of their numbers.
inline constexpr std::array<std::string_view, 4> pdp_types{"IP", "PPP", "IPV6", "IPV4V6"};

struct PdpProfile {
    std::string type;
    std::string apn;
};

class Profiles
{
public:
    static constexpr int most = 16;
    static constexpr int for_data = 3; // the profile that the data connection uses

    Profiles();

    // `number` 1 to 16; `type` "IP", "PPP", "IPV6" or "IPV4V6"; `apn` a host name or empty.
    RetCode set(std::string_view number, std::string_view type, std::string_view apn);

    // A device-management session puts the operator's values into the modem, and into the modem
    // alone: what is published stays until the next `synchronize`.
    void provision();
    void synchronize() { published_ = profiles_[for_data - 1]; }

    const PdpProfile &published() const { return published_; }
    const PdpProfile &of_modem(int number) const
    {
        return profiles_.at(static_cast<std::size_t>(number) - 1);
    }

private:
    std::array<PdpProfile, most> profiles_;
    PdpProfile published_;
};

} // namespace sim

#endif
