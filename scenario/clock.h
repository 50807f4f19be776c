// The time that the simulation runs by, and what happens at a moment of it. A RealClock follows the
// machine's time; a ManualClock keeps its time until it is advanced.
#ifndef SCENARIO_CLOCK_H
#define SCENARIO_CLOCK_H

#include "time_scale.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace scenario
{

class Alarm;

class Clock
{
public:
    explicit Clock(TimeScale scale) : scale_(scale) {}
    virtual ~Clock() = default;
    Clock(const Clock &) = delete;
    Clock &operator=(const Clock &) = delete;

    virtual Time now() const = 0;
    TimeScale scale() const { return scale_; }

    // How many threads are at work rather than waiting for something. A clock that is advanced
    // waits for them. Any thread may call for another one; see also Work.
    void begin_work();
    void end_work();

protected:
    friend class Alarm;
    friend class Waiters;

    // A clock that is advanced lets the threads that were woken go on one after the other, in the
    // order in which they began to wait, once the alarm that woke them has rung.
    virtual bool takes_turns() const { return false; }

    // A worker waits; the number by which it is known then. It works from resume() on, by whichever
    // thread, and goes on after its own take_turn().
    unsigned rest();
    void resume(const std::vector<unsigned> &workers);
    void take_turn(unsigned worker);

    Alarm *earliest() const; // of those that are set; of equal ones, the one that was created first
    // Lets the alarm ring, without the lock.
    void ring(std::unique_lock<std::mutex> &lock, Alarm &alarm);

    mutable std::mutex mutex_; // of all below, and of the alarms' times
    std::condition_variable changed_;
    std::vector<Alarm *> alarms_;
    const Alarm *ringing_ = nullptr;
    unsigned working_ = 0;

private:
    void stop_working(); // for the holder of the lock

    unsigned next_worker_ = 0;
    std::set<unsigned> resumed_; // those that have not had their turn
    bool turn_taken_ = false;
    TimeScale scale_;
};

// Something that is to happen at a time.
class Alarm
{
public:
    // Calls `rung` once for each time that is set, from the thread that moves the clock. The alarm
    // must not be destroyed from there.
    Alarm(Clock &clock, std::function<void()> rung);
    ~Alarm(); // `rung` is not running any more
    Alarm(const Alarm &) = delete;
    Alarm &operator=(const Alarm &) = delete;

    // Replaces the time that was set; nothing switches the alarm off.
    void set(std::optional<Time> time);

private:
    friend class Clock;
    friend class RealClock;
    friend class ManualClock;

    Clock &clock_;
    std::function<void()> rung_;
    std::optional<Time> time_;
};

} // namespace scenario

#endif
