// Leaves a terminal's interrupt to the program that runs in the sandbox.
#ifndef SANDBOX_INTERRUPTS_H
#define SANDBOX_INTERRUPTS_H

#include <csignal>

namespace sandbox
{

// While this object exists, the process ignores SIGINT and SIGQUIT: it only waits for the program.
// Its child calls restore() before it becomes that program.
class InterruptsIgnored
{
public:
    InterruptsIgnored()
    {
        struct sigaction ignore = {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGINT, &ignore, &interrupt_);
        sigaction(SIGQUIT, &ignore, &quit_);
    }
    ~InterruptsIgnored() { restore(); }
    InterruptsIgnored(const InterruptsIgnored &) = delete;
    InterruptsIgnored &operator=(const InterruptsIgnored &) = delete;

    void restore() const
    {
        sigaction(SIGINT, &interrupt_, nullptr);
        sigaction(SIGQUIT, &quit_, nullptr);
    }

private:
    struct sigaction interrupt_ = {}, quit_ = {};
};

} // namespace sandbox

#endif
