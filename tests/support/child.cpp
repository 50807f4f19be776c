#include "child.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <sys/wait.h>
#include <thread>

Child::Child(const std::function<void()> &body) : process_(fork())
{
    if (process_ == 0) {
        body();
        (void)fflush(nullptr);
        _exit(0);
    }
    output_.restore();
}

Child::~Child()
{
    if (process_ <= 0)
        return;
    signal(SIGKILL);
    wait();
}

bool Child::still_runs() const
{
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    siginfo_t state{};
    return waitid(P_PID, static_cast<id_t>(process_), &state, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           state.si_pid == 0;
}

int Child::wait()
{
    int status = 0;
    while (waitpid(process_, &status, 0) < 0) {}
    process_ = -1;
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

void Child::signal(int number) const
{
    kill(process_, number);
}
