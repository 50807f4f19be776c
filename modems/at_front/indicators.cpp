#include "indicators.h"

#include <algorithm>

namespace at_front
{

using daemons::Registration;

int received_signal(const daemons::ModemStatus &status)
{
    constexpr int unknown = 99, weakest = -113, best = 31;
    if (!status.signal.csq_rssi)
        return unknown;
    return std::clamp((*status.signal.csq_rssi - weakest) / 2, 0, best);
}

Indicators indicators_of(const daemons::ModemStatus &status)
{
    constexpr int unknown = 99, steps_of_a_bar = 6;
    const int signal = received_signal(status);
    const Registration state = status.registration.value_or(Registration::none);
    const bool roaming = state == Registration::roaming;
    return {signal == unknown ? 0 : std::min(signal / steps_of_a_bar, 5),
            static_cast<int>(roaming || state == Registration::home), static_cast<int>(roaming),
            static_cast<int>(status.sim && status.sim != daemons::SimStatus::absent)};
}

} // namespace at_front
