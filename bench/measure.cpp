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

const char *mark(bool good)
{
    return good ? "" : "  MISSED";
}

double nanoseconds(int calls, const Work &work)
{
    const auto start = std::chrono::steady_clock::now();
    for (int call = 0; call < calls; ++call)
        work();
    const std::chrono::duration<double, std::nano> spent = std::chrono::steady_clock::now() - start;
    return spent.count() / calls;
}

// Lets the child run to its next system call or signal; false once it has ended.
bool next_stop(int child, int &status)
{
    ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    return waitpid(child, &status, 0) == child && !WIFEXITED(status);
}

// The child stops itself before and after a call of `work`; counts its stops in between.
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
    while (next_stop(child, status) && WSTOPSIG(status) != SIGSTOP)
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

bool compare(const char *what, int calls, double bar, const Work &by_hand, const Work &by_library)
{
    double hand = std::numeric_limits<double>::max();
    double library = hand;
    for (int round = 0; round < rounds; ++round) {
        hand = std::min(hand, nanoseconds(calls, by_hand));
        library = std::min(library, nanoseconds(calls, by_library));
    }
    const double ratio = library / hand;
    const bool good = ratio <= bar;
    std::fprintf(figures, "%-34s %9.1f ns %9.1f ns   %5.3f  (at most %.2f)%s\n", what, hand,
                 library, ratio, bar, mark(good));
    return good;
}

int system_calls(const Work &work)
{
    return (stops(work) - stops([] {})) / 2; // at the entry and the exit of each
}

bool expect_count(const char *what, int count, int bar)
{
    const bool good = count == bar;
    std::fprintf(figures, "%-34s %d  (exactly %d)%s\n", what, count, bar, mark(good));
    return good;
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
