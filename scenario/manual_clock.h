// A time that stops until it is advanced, so that the same steps give the same results.
#ifndef SCENARIO_MANUAL_CLOCK_H
#define SCENARIO_MANUAL_CLOCK_H

#include "clock.h"

namespace scenario
{

class ManualClock final : public Clock
{
public:
    // `moved` is called with each time that the clock goes to, before what happens then.
    explicit ManualClock(std::function<void(Time)> moved = {})
        : Clock(TimeScale(1)), moved_(std::move(moved))
    {
    }

    Time now() const override;

    // Goes from alarm to alarm in the order of their times. When it returns, everything that was
    // due has happened, and the threads that it set to work are waiting again. False when one of
    // them was still at work after `patience` of real time; the clock has then gone on without it.
    // Not to be called from an alarm.
    bool advance(Duration time, Duration patience = std::chrono::seconds(10));

    // Carries the action out as an alarm of this moment would, and returns when what follows from
    // it is done. What the action throws is passed on.
    void perform(const std::function<void()> &action);

private:
    bool takes_turns() const override { return true; }
    bool wait_for_idle(std::unique_lock<std::mutex> &lock, Duration patience);
    void move_to(Time time);

    std::function<void(Time)> moved_;
    std::mutex advancing_;
    Time now_{};
};

} // namespace scenario

#endif
