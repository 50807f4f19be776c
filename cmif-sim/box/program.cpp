#include "program.h"

#include "sandbox/interrupts.h"
#include "sandbox/worker.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

// Makes `owner` the terminal's foreground process group, as a shell does with its jobs.
void give_terminal(pid_t owner)
{
    const auto stop = std::signal(SIGTTOU, SIG_IGN);
    tcsetpgrp(STDIN_FILENO, owner);
    std::signal(SIGTTOU, stop);
}

bool has_terminal()
{
    return isatty(STDIN_FILENO) != 0 && tcgetpgrp(STDIN_FILENO) == getpgrp();
}

[[noreturn]] void exit_not_run(const char *program)
{
    const int reason = errno;
    std::fprintf(stderr, "cmif-sim: cannot run %s: %s\n", program, std::strerror(reason));
    std::_Exit(reason == ENOENT ? 127 : 126);
}

[[noreturn]] void become_shell()
{
    const char *chosen = std::getenv("SHELL");
    const char *shell = chosen && access(chosen, X_OK) == 0 ? chosen : "/bin/sh";
    if (has_terminal()) {
        std::fprintf(stderr, "cmif-sim: this shell runs beside a simulated router; try `cmifctl "
                             "status`. It has its own /tmp and /data. `exit` ends both.\n");
        setpgid(0, 0);
        give_terminal(getpid());
    }
    execl(shell, shell, nullptr);
    exit_not_run(shell);
}

[[noreturn]] void become(const std::vector<std::string> &command)
{
    std::vector<char *> arguments(command.size() + 1); // with the null pointer at the end
    for (std::size_t i = 0; i < command.size(); ++i)
        arguments[i] = const_cast<char *>(command[i].c_str());
    execvp(arguments[0], arguments.data());
    exit_not_run(arguments[0]);
}

} // namespace

int run_command(const std::vector<std::string> &command)
{
    const sandbox::InterruptsIgnored interrupts;
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process == 0) {
        sandbox::end_with_parent(parent, SIGKILL);
        interrupts.restore();
        if (command.empty())
            become_shell();
        become(command);
    }
    return sandbox::wait_for(process, process);
}

TerminalGuard::TerminalGuard() : held_(has_terminal()) {}

TerminalGuard::~TerminalGuard()
{
    if (held_)
        give_terminal(getpgrp());
}

} // namespace cmif_sim
