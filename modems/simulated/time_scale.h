// Durations in the simulation are stated as on a real modem and scaled by one factor.
#ifndef MODEMS_SIMULATED_TIME_SCALE_H
#define MODEMS_SIMULATED_TIME_SCALE_H

#include <chrono>

namespace simulated
{

using Clock = std::chrono::steady_clock;

class TimeScale
{
public:
    // 1 is realistic, 0.1 ten times faster, 0 takes no time at all.
    explicit TimeScale(double factor) : factor_(factor > 0 ? factor : 0) {}

    Clock::duration scaled(std::chrono::milliseconds real) const
    {
        return std::chrono::duration_cast<Clock::duration>(real * factor_);
    }

private:
    double factor_;
};

} // namespace simulated

#endif
