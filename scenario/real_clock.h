// The machine's time. A thread of the clock's own lets its alarms ring.
#ifndef SCENARIO_REAL_CLOCK_H
#define SCENARIO_REAL_CLOCK_H

#include "clock.h"

#include <thread>

namespace scenario
{

class RealClock final : public Clock
{
public:
    explicit RealClock(TimeScale scale = TimeScale(1));
    ~RealClock() override; // after all its alarms

    Time now() const override { return std::chrono::steady_clock::now(); }

private:
    void run();

    bool ending_ = false;
    std::thread thread_;
};

} // namespace scenario

#endif
