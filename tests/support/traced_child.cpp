#include "traced_child.h"

#include "require.h"

#include <csignal>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int call_stop = SIGTRAP | 0x80;

pid_t start(const Traced &traced)
{
    const pid_t child = require(fork(), "fork");
    if (child == 0) {
        traced.prepare();
        ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        syscall(SYS_kill, getpid(), SIGSTOP);
        traced.body();
        syscall(SYS_exit_group, 0); // _exit() makes other calls first, under sanitizers
    }
    int status = 0;
    waitpid(child, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    return child;
}

// Lets it run to its next system call. Whether there is one but its exit; `status` is that of
// waitpid.
bool next_call(pid_t child, int &status)
{
    __ptrace_syscall_info stop{};
    do {
        ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
        if (waitpid(child, &status, 0) != child || !WIFSTOPPED(status))
            return false;
        stop = {};
        if (WSTOPSIG(status) == call_stop)
            ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof stop, &stop);
    } while (stop.op != PTRACE_SYSCALL_INFO_ENTRY);
    return stop.entry.nr != SYS_exit_group;
}

void finish(pid_t child, int &status)
{
    if (WIFSTOPPED(status)) {
        ptrace(PTRACE_CONT, child, nullptr, nullptr);
        waitpid(child, &status, 0);
    }
}

} // namespace

int system_calls(const Traced &traced)
{
    const pid_t child = start(traced);
    int status = 0, count = 0;
    while (next_call(child, status))
        ++count;
    finish(child, status);
    return status == 0 ? count : -1;
}

bool killed_before(int call, const Traced &traced)
{
    const pid_t child = start(traced);
    int status = 0;
    for (int number = 0; next_call(child, status); ++number)
        if (number == call) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return true;
        }
    finish(child, status);
    require(status == 0 ? 0 : -1, "the traced child");
    return false;
}
