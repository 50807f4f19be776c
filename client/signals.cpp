#include "signals.h"

#include "failure.h"

#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>

namespace client
{
namespace
{

// All whose default ends a process, but SIGKILL and those of its own faults.
sigset_t ending_signals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGALRM, SIGUSR1, SIGUSR2,
                             SIGXCPU, SIGXFSZ, SIGVTALRM, SIGPROF, SIGIO, SIGPWR, SIGSTKFLT})
        sigaddset(&signals, number);
    for (int number = SIGRTMIN; number <= SIGRTMAX; ++number)
        sigaddset(&signals, number);
    return signals;
}

} // namespace

HeldSignals::HeldSignals()
{
    const sigset_t signals = ending_signals();
    sigprocmask(SIG_BLOCK, &signals, &before_);
    file_ = File(signalfd(-1, &signals, SFD_CLOEXEC));
}

HeldSignals::~HeldSignals()
{
    sigprocmask(SIG_SETMASK, &before_, nullptr);
}

int HeldSignals::received() const
{
    signalfd_siginfo info{};
    const ssize_t size = read(fd(), &info, sizeof info);
    return size == sizeof info ? static_cast<int>(info.ssi_signo) : SIGTERM;
}

void HeldSignals::check() const
{
    pollfd file{fd(), POLLIN, 0};
    if (poll(&file, 1, 0) > 0)
        throw Interrupted{received()};
}

void unblock_held_signals()
{
    const sigset_t signals = ending_signals();
    sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

// The limit is not enough where a program receives the dumps.
void forbid_core_dumps()
{
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    prctl(PR_SET_DUMPABLE, 0);
}

} // namespace client
