// Durations in the simulation are stated as on a real router and scaled by one factor.
#ifndef SCENARIO_TIME_SCALE_H
#define SCENARIO_TIME_SCALE_H

#include <chrono>

namespace scenario
{

using Time = std::chrono::steady_clock::time_point;
using Duration = std::chrono::steady_clock::duration;

class TimeScale
{
public:
    // 1 is realistic, 0.1 ten times faster, 0 takes no time at all.
    explicit TimeScale(double factor) : factor_(factor > 0 ? factor : 0) {}

    Duration scaled(std::chrono::milliseconds real) const
    {
        return std::chrono::duration_cast<Duration>(real * factor_);
    }

private:
    double factor_;
};

} // namespace scenario

#endif
