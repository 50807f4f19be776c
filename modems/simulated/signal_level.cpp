#include "signal_level.h"

#include <algorithm>
#include <cstdlib>

namespace simulated
{

// A random walk that turns back more often the further it has come. Own arithmetic rather than a
// distribution of the standard library: those differ between implementations.
int SignalLevel::random_step(int value, int reach)
{
    const int choice = static_cast<int>((random_() >> 8) % static_cast<unsigned>(4 * reach));
    const int up_below = reach - value; // out of 2 * reach; the other half of the choices stays
    if (choice >= 2 * reach)
        return value;
    return value + (choice < up_below ? 1 : -1);
}

void SignalLevel::step()
{
    offset_.rssi = random_step(offset_.rssi, 6);
    offset_.rsrp = random_step(offset_.rsrp, 6);
    offset_.rsrq = random_step(offset_.rsrq, 2);
    offset_.sinr = random_step(offset_.sinr, 4);
}

int SignalLevel::rssi(const Cell &cell) const
{
    const bool follows = fixed_.rsrp && cell.technology == Technology::eutran;
    const int offset = follows ? *fixed_.rsrp - cell.means.rsrp : offset_.rssi;
    return fixed_.rssi.value_or(cell.means.rssi + offset);
}

int SignalLevel::csq_rssi(const Cell &cell) const
{
    const int index = std::clamp((rssi(cell) + 113) / 2, 0, 31);
    return -113 + 2 * index;
}

} // namespace simulated
