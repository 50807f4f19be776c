#include "soak.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace soak
{
namespace
{

bool missed = false;

void print(const char *what, int value, const char *kind, int bar, bool met)
{
    std::printf("  %-46s %7d  (%s %d)%s\n", what, value, kind, bar, met ? "" : "  MISSED");
    missed = missed || !met;
}

} // namespace

pid_t start(const std::function<void()> &body)
{
    const pid_t process = fork();
    if (process != 0)
        return process;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    try {
        body();
    } catch (const std::exception &error) {
        std::fprintf(stderr, "%s\n", error.what());
        _exit(1);
    }
    _exit(0);
}

void wait_for(pid_t process)
{
    int state = 0;
    waitpid(process, &state, 0);
    if (state != 0) {
        std::fprintf(stderr, "a process of this program ended with wait status %d\n", state);
        missed = true;
    }
}

void end(pid_t process)
{
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
}

void pause_ms(int milliseconds)
{
    usleep(static_cast<useconds_t>(milliseconds) * 1000);
}

void at_most(int bar, const char *what, int value)
{
    print(what, value, "at most", bar, value <= bar);
}

void at_least(int bar, const char *what, int value)
{
    print(what, value, "at least", bar, value >= bar);
}

int status()
{
    return missed ? 1 : 0;
}

} // namespace soak
