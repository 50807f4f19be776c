#include "server.h"

#include "daemons/at_daemon.h"
#include "daemons/qmi_daemon.h"
#include "daemons/service_lock.h"
#include "platform/host_store.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <poll.h>
#include <string>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sim
{
namespace
{

// Readable when the server is told to end. The signals are blocked in all threads from now on, and
// count even where a shell had them ignored for a background job.
int end_signals()
{
    sigset_t ends;
    sigemptyset(&ends);
    for (const int number : {SIGTERM, SIGINT}) {
        sigaddset(&ends, number);
        std::signal(number, SIG_DFL);
    }
    std::signal(SIGPIPE, SIG_IGN); // a reader of our lines may go before we do
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);
    return signalfd(-1, &ends, SFD_CLOEXEC);
}

// Carries the modem on in time until a signal ends it.
void run(Modem &modem, int signals)
{
    pollfd fds[] = {{signals, POLLIN, 0}, {modem.timer_fd(), POLLIN, 0}};
    while (poll(fds, 2, -1) >= 0 || errno == EINTR) {
        if (fds[0].revents)
            return;
        if (fds[1].revents)
            modem.carry_on();
    }
}

void tell_ready(int fd)
{
    if (fd >= 0 && write(fd, "", 1) != 1)
        std::perror("cmif-sim: nobody hears that it is ready");
}

int serve_until(int signals, const ServerOptions &options, int ready_fd)
{
    const Pace pace(options.pace);
    Modem modem(pace, options.seed);
    AtDaemon at(modem, pace, options.verbose);
    QmiDaemon qmi(modem, options.verbose);
    if ((options.at && !at.start()) || (options.qmi && !qmi.start()))
        return 1;
    tell_ready(ready_fd);
    run(modem, signals);
    return 0;
}

} // namespace

int serve(const ServerOptions &options, int ready_fd)
try {
    ServiceLock at_lock("/tmp/cmif-sim-at.lock", "the AT queues are");
    ServiceLock qmi_lock("/tmp/cmif-sim-qmi.lock", "the QMI queues are");
    if ((options.at && !at_lock.take()) || (options.qmi && !qmi_lock.take()))
        return 1;
    // Two modems in one store would overwrite each other's values. Of a folder that can't be used
    // the store itself tells, below.
    const std::string store = host_store_directory();
    const bool usable =
        access(store.c_str(), W_OK | X_OK) == 0 || mkdir(store.c_str(), S_IRWXU) == 0;
    ServiceLock store_lock(store + "/router.lock", "the store is");
    if (usable && !store_lock.take())
        return 1;
    const int signals = end_signals();
    if (signals < 0) {
        std::perror("cmif-sim: signalfd");
        return 1;
    }
    if (host_store_power_cycle() != 0)
        return 1;
    const int status = serve_until(signals, options, ready_fd);
    close(signals);
    return status;
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmif-sim: %s\n", error.what());
    return 1;
}

} // namespace sim
