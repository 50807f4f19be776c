// The command, or the shell, that runs beside the router.
#ifndef CMIF_SIM_BOX_PROGRAM_H
#define CMIF_SIM_BOX_PROGRAM_H

#include <string>
#include <vector>

namespace cmif_sim
{

// Runs `command`, a shell if it is empty, and returns its exit status, 128 + N if signal N ended
// it. 127 if there is no such program, 126 if it can't be run.
int run_command(const std::vector<std::string> &command);

// If this process's group has the terminal, takes it back in the end: a shell that was started as a
// job of its own has taken it away.
class TerminalGuard
{
public:
    TerminalGuard();
    ~TerminalGuard();
    TerminalGuard(const TerminalGuard &) = delete;
    TerminalGuard &operator=(const TerminalGuard &) = delete;

private:
    bool held_;
};

} // namespace cmif_sim

#endif
