#include "system_calls.h"

#include <csignal>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench
{
namespace
{

// Lets the child run to its next system call or signal; false once it has ended.
bool next_stop(int child, int &status)
{
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    return waitpid(child, &status, 0) == child && !WIFEXITED(status);
}

// The child stops itself before and after a call of `work`; counts its stops in between.
int stops(const std::function<void()> &work)
{
    const int child = fork();
    if (child == 0) {
        const pid_t self = getpid();
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        work(); // the first call reads its switches
        kill(self, SIGSTOP);
        work();
        kill(self, SIGSTOP);
        _exit(0);
    }
    int status = 0, count = 0;
    waitpid(child, &status, 0);
    while (next_stop(child, status) && WSTOPSIG(status) != SIGSTOP)
        ++count;
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return count;
}

} // namespace

int system_calls(const std::function<void()> &work)
{
    return (stops(work) - stops([] {})) / 2; // at the entry and the exit of each
}

} // namespace bench
