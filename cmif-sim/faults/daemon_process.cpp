#include "daemon_process.h"

#include "daemons/daemon_thread.h"

#include <cerrno>
#include <csignal>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

using namespace daemons;

constexpr std::size_t max_record = sizeof(long) + DaemonThread::max_payload;

// Signals as a daemon has them: SIGTERM ends it. A terminal's interrupt is for the router.
void reset_signals()
{
    for (const int number : {SIGTERM, SIGHUP, SIGUSR1, SIGPIPE})
        std::signal(number, SIG_DFL);
    std::signal(SIGINT, SIG_IGN);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

// Without the files of the router, whose readers would wait for this process too.
void keep_only(int file)
{
    constexpr int lowest = STDERR_FILENO + 1;
    dup2(file, lowest);
    close_range(lowest + 1, ~0U, 0);
}

// Forked from a program with threads: nothing here may allocate memory or take a lock.
[[noreturn]] void serve(const char *name, const MessageQueue &requests, pid_t parent)
{
    constexpr int router = STDERR_FILENO + 1;
    constexpr useconds_t pause = 10'000;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NAME, name);
    alignas(long) char record[max_record];
    char question = 0;
    send(router, "", 1, MSG_NOSIGNAL);
    while (getppid() == parent && read(router, &question, 1) == 1) {
        std::optional<std::size_t> payload;
        while (!(payload = requests.receive(record, DaemonThread::max_payload)))
            usleep(pause); // the queue can't be made: a limit of the system's, perhaps
        send(router, record, sizeof(long) + *payload, MSG_NOSIGNAL);
    }
    _exit(0);
}

} // namespace

DaemonProcess::DaemonProcess(const char *name, key_t requests)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        throw std::system_error(errno, std::generic_category(), "socketpair");
    const pid_t parent = getpid();
    process_ = fork();
    if (process_ == 0) {
        reset_signals();
        keep_only(ends[1]);
        serve(name, MessageQueue(requests), parent);
    }
    close(ends[1]);
    socket_ = ends[0];
    if (process_ == -1) {
        close(socket_);
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    char ready = 0; // from now on it can be frozen: it holds no file of this program any more
    while (recv(socket_, &ready, 1, 0) == -1 && errno == EINTR) {}
}

DaemonProcess::~DaemonProcess()
{
    kill();
    close(socket_);
}

void DaemonProcess::send(int signal) const
{
    if (const pid_t process = process_; process > 0)
        ::kill(process, signal);
}

// Its number stays its own until it has been waited for.
void DaemonProcess::kill()
{
    const pid_t process = process_.exchange(-1);
    if (process <= 0)
        return;
    ::kill(process, SIGKILL);
    while (waitpid(process, nullptr, 0) == -1 && errno == EINTR) {}
}

std::optional<std::size_t> DaemonProcess::receive(void *record, std::size_t room)
{
    if (!asked_)
        asked_ = ::send(socket_, "", 1, MSG_NOSIGNAL) == 1;
    const ssize_t size = recv(socket_, record, sizeof(long) + room, 0);
    ended_ = size == 0 || (size == -1 && errno != EINTR);
    if (size < static_cast<ssize_t>(sizeof(long)))
        return std::nullopt;
    asked_ = false;
    return static_cast<std::size_t>(size) - sizeof(long);
}

} // namespace cmif_sim
