#include "signal_level.h"

#include <algorithm>
#include <cstdlib>

namespace sim
{

// A random walk that turns back the more willingly the further it has come. Own arithmetic rather
// than a distribution of the standard library: those differ between implementations.
int SignalLevel::wander(int value, int reach)
{
    const int choice = static_cast<int>((random_() >> 8) % static_cast<unsigned>(4 * reach));
    const int up_below = reach - value; // out of 2 * reach; the other half of the choices stays
    if (choice >= 2 * reach)
        return value;
    return value + (choice < up_below ? 1 : -1);
}

void SignalLevel::step()
{
    off_mean_.rssi = wander(off_mean_.rssi, 6);
    off_mean_.rsrp = wander(off_mean_.rsrp, 6);
    off_mean_.rsrq = wander(off_mean_.rsrq, 2);
    off_mean_.sinr = wander(off_mean_.sinr, 4);
}

int SignalLevel::indexed_rssi(const Cell &cell) const
{
    const int index = std::clamp((rssi(cell) + 113) / 2, 0, 31);
    return -113 + 2 * index;
}

} // namespace sim
