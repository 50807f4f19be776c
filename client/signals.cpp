#include "signals.h"

#include <sys/signalfd.h>

namespace client
{
namespace
{

sigset_t ending_signals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGHUP);
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

void unblock_held_signals()
{
    const sigset_t signals = ending_signals();
    sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

} // namespace client
