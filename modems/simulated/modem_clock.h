// The time that the simulated modem runs by, and the wait for a moment in it.
#ifndef MODEMS_SIMULATED_MODEM_CLOCK_H
#define MODEMS_SIMULATED_MODEM_CLOCK_H

#include "time_scale.h"

#include <condition_variable>
#include <mutex>
#include <optional>

namespace simulated
{

class ModemClock
{
public:
    // NOLINTNEXTLINE(readability-convert-member-functions-to-static): each modem asks its own clock
    Clock::time_point now() const { return Clock::now(); }

    // Waits for wake(), until `deadline` at the latest; may return early.
    void wait(std::unique_lock<std::mutex> &lock, std::optional<Clock::time_point> deadline)
    {
        if (deadline)
            woken_.wait_until(lock, *deadline);
        else
            woken_.wait(lock);
    }
    void wake() { woken_.notify_all(); }

private:
    std::condition_variable woken_;
};

} // namespace simulated

#endif
