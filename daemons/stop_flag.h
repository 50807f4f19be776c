// A request to end that threads can wait for.
#ifndef DAEMONS_STOP_FLAG_H
#define DAEMONS_STOP_FLAG_H

#include "modems/simulated/time_scale.h"

namespace sim
{

class StopFlag
{
public:
    StopFlag();
    ~StopFlag();
    StopFlag(const StopFlag &) = delete;
    StopFlag &operator=(const StopFlag &) = delete;

    void raise();
    bool raised() const { return wait_for({}); }

    // Waits until the flag is raised, but no longer than this; true when it is.
    bool wait_for(Clock::duration time) const;

private:
    int event_;
};

} // namespace sim

#endif
