// Signal measurements: they drift slowly around a cell's means, the same for the same seed, or are
// fixed by hand.
#ifndef MODEMS_SIMULATED_SIGNAL_LEVEL_H
#define MODEMS_SIMULATED_SIGNAL_LEVEL_H

#include "network.h"

#include <random>

namespace simulated
{

// Those without a value drift.
struct FixedSignal {
    std::optional<int> rssi, rsrp, rsrq, sinr;
};

class SignalLevel
{
public:
    explicit SignalLevel(unsigned seed) : random_(seed) {}

    // One small step: at most 1 in each value.
    void step();

    // An RSSI that drifts is as far from its mean as the RSRP is.
    void fix(const FixedSignal &fixed) { fixed_ = fixed; }

    int rssi(const Cell &cell) const;
    int rsrp(const Cell &cell) const { return fixed_.rsrp.value_or(drifting_rsrp(cell)); }
    int rsrq(const Cell &cell) const
    {
        return fixed_.rsrq.value_or(cell.means.rsrq + offset_.rsrq);
    }
    int sinr(const Cell &cell) const
    {
        return fixed_.sinr.value_or(cell.means.sinr + offset_.sinr);
    }

    // RSSI as its index in AT+CSQ gives it: odd numbers from -113 to -51 dBm.
    int csq_rssi(const Cell &cell) const;

private:
    int random_step(int value, int reach);
    int drifting_rsrp(const Cell &cell) const { return cell.means.rsrp + offset_.rsrp; }

    std::minstd_rand random_;
    SignalMeans offset_{};
    FixedSignal fixed_;
};

} // namespace simulated

#endif
