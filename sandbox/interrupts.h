#ifndef SANDBOX_INTERRUPTS_H
#define SANDBOX_INTERRUPTS_H

#include <csignal>

namespace sim
{

/*
 * A terminal's interrupt is meant for the program that runs in the sandbox. Those who wait for it
 * ignore theirs, and a child puts things back with restore() before it becomes that program.
 */
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

} // namespace sim

#endif
