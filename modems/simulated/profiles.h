// The modem's connection profiles (PDP contexts), as AT+CGDCONT keeps them.
#ifndef MODEMS_SIMULATED_PROFILES_H
#define MODEMS_SIMULATED_PROFILES_H

#include "daemons/modem_status.h"

#include <array>

namespace simulated
{

using daemons::CmeError;
using daemons::PdpProfile;

class Profiles
{
public:
    static constexpr int max_profiles = 16;
    static constexpr int data_profile = 3; // the number of the one that the data connection uses

    Profiles();

    // `number` from 1; the access point name is a host name or empty.
    CmeError set(int number, const PdpProfile &profile);

    // A device-management session puts the operator's values into the modem, and into the modem
    // alone: what is published stays until the next synchronize().
    void provision();
    void synchronize() { published_ = stored(data_profile); }

    const PdpProfile &published() const { return published_; }
    const PdpProfile &stored(int number) const
    {
        return profiles_.at(static_cast<std::size_t>(number) - 1);
    }

private:
    PdpProfile &at(int number) { return profiles_.at(static_cast<std::size_t>(number) - 1); }

    std::array<PdpProfile, max_profiles> profiles_;
    PdpProfile published_;
};

} // namespace simulated

#endif
