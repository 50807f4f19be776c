// The lock of a run without namespaces: one run at a time on the machine.
#ifndef SANDBOX_RUN_LOCK_H
#define SANDBOX_RUN_LOCK_H

#include <sys/types.h>

namespace sandbox
{

// Waits until the lock is free; after half a second it prints which process has it. It is held as
// long as a copy of the descriptor is open, in this process or in one that it forks: a run has
// ended when all its processes have. Throws std::system_error.
class RunLock
{
public:
    explicit RunLock(pid_t run); // the process by whose end the user ends the run
    ~RunLock();
    RunLock(const RunLock &) = delete;
    RunLock &operator=(const RunLock &) = delete;

private:
    int file_;
};

} // namespace sandbox

#endif
