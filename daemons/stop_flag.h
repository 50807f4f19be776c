// A request to end, which threads can wait for.
#ifndef DAEMONS_STOP_FLAG_H
#define DAEMONS_STOP_FLAG_H

#include <chrono>

namespace daemons
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

    // Waits until the flag is raised, but no longer than `time`; true when it is raised.
    bool wait_for(std::chrono::steady_clock::duration time) const;

private:
    int event_;
};

} // namespace daemons

#endif
