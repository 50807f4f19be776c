#include "worker.h"

#include "interrupts.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sandbox
{

int wait_for(pid_t awaited, pid_t reaped)
{
    if (awaited == -1)
        return 1;
    int status = 0;
    for (pid_t ended = 0; ended != awaited;) {
        ended = waitpid(reaped, &status, 0);
        if (ended == -1 && errno != EINTR)
            return 1;
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

void end_with_parent(pid_t parent, int signal)
{
    prctl(PR_SET_PDEATHSIG, signal);
    const pid_t seen = getppid(); // 0 if the parent is outside this PID namespace
    if (seen != parent && seen != 0)
        _exit(1);
}

pid_t start_worker(const Work &work, const InterruptsIgnored &interrupts) noexcept
{
    const pid_t init = getpid();
    const pid_t worker = fork();
    if (worker != 0)
        return worker;
    end_with_parent(init, SIGKILL);
    interrupts.restore();
    std::exit(work());
}

} // namespace sandbox
