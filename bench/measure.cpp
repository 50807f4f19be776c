#include "measure.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <limits>
#include <sched.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench
{
namespace
{

constexpr int rounds = 100;

double nanoseconds(int calls, const Work &work)
{
    const auto start = std::chrono::steady_clock::now();
    for (int call = 0; call < calls; ++call)
        work();
    const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
    return spent.count() / calls;
}

// Lets the child go on to its next stop; false once it has ended.
bool next_stop(int child, __ptrace_request how, int &status)
{
    ptrace(how, child, nullptr, nullptr);
    return waitpid(child, &status, 0) == child && !WIFEXITED(status);
}

// The child stops itself before and after a call of its work; counts its other stops in between.
int stops(const Work &work)
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
    while (next_stop(child, PTRACE_SYSCALL, status) && WSTOPSIG(status) != SIGSTOP)
        ++count;
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return count;
}

} // namespace

std::FILE *figures = stdout;

void stay_on_one_core()
{
    cpu_set_t core;
    CPU_ZERO(&core);
    CPU_SET(0, &core);
    if (sched_setaffinity(0, sizeof core, &core) != 0)
        std::perror("sched_setaffinity");
}

bool compare(const char *what, int calls, double bar, const Work &theirs, const Work &ours)
{
    double by_hand = std::numeric_limits<double>::max();
    double by_library = by_hand;
    for (int round = 0; round < rounds; ++round) {
        by_hand = std::min(by_hand, nanoseconds(calls, theirs));
        by_library = std::min(by_library, nanoseconds(calls, ours));
    }
    const double ratio = by_library / by_hand;
    std::fprintf(figures, "%-34s %9.1f ns %9.1f ns   %5.3f  (at most %.2f)\n", what, by_hand,
                 by_library, ratio, bar);
    return ratio <= bar;
}

int system_calls(const Work &work)
{
    return (stops(work) - stops([] {})) / 2; // at the entry and the exit of each
}

bool expect_count(const char *what, int count, int bar)
{
    std::fprintf(figures, "%-34s %d  (exactly %d)\n", what, count, bar);
    return count == bar;
}

Daemon::Daemon(const Work &serve) : child_(fork())
{
    if (child_ != 0)
        return;
    serve();
    _exit(1);
}

Daemon::~Daemon()
{
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
}

} // namespace bench
