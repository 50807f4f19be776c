#include "call_end.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace client
{
namespace
{

volatile std::sig_atomic_t exchanging = 0;
volatile std::sig_atomic_t told_to_end = 0;
const char *marker_of_call = nullptr;

// The marker goes last: a shell command of the call may be about to create it.
[[noreturn]] void end()
{
    std::signal(SIGTERM, SIG_IGN);
    kill(0, SIGTERM);
    while (wait(nullptr) > 0) {}
    if (marker_of_call != nullptr)
        unlink(marker_of_call);
    _exit(1);
}

// A signal may arrive immediately before the process sleeps in the kernel; the alarm wakes it.
void handle(int)
{
    if (exchanging == 0)
        end();
    told_to_end = 1;
    alarm(1);
}

} // namespace

void end_on_sigterm(const char *marker)
{
    marker_of_call = marker;
    struct sigaction action {
    };
    action.sa_handler = handle;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGALRM, &action, nullptr);
}

Exchange::Exchange()
{
    exchanging = 1;
}

Exchange::~Exchange()
{
    exchanging = 0;
    if (told_to_end != 0)
        end();
}

} // namespace client
