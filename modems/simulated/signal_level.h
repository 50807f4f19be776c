// Signal measurements that drift slowly around a cell's means; the same for the same seed.
#ifndef MODEMS_SIMULATED_SIGNAL_LEVEL_H
#define MODEMS_SIMULATED_SIGNAL_LEVEL_H

#include "network.h"

#include <random>

namespace simulated
{

class SignalLevel
{
public:
    explicit SignalLevel(unsigned seed) : random_(seed) {}

    // One small step: at most 1 in each value.
    void step();

    int rssi(const Cell &cell) const { return cell.means.rssi + offset_.rssi; }
    int rsrp(const Cell &cell) const { return cell.means.rsrp + offset_.rsrp; }
    int rsrq(const Cell &cell) const { return cell.means.rsrq + offset_.rsrq; }
    int sinr(const Cell &cell) const { return cell.means.sinr + offset_.sinr; }

    // RSSI as its index in AT+CSQ gives it: odd numbers from -113 to -51 dBm.
    int csq_rssi(const Cell &cell) const;

private:
    int random_step(int value, int reach);

    std::minstd_rand random_;
    SignalMeans offset_{};
};

} // namespace simulated

#endif
