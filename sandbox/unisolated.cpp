#include "unisolated.h"

#include "check.h"
#include "leftovers.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <fstream>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sandbox
{
namespace
{

constexpr const char *lock_file = "/tmp/cmif-sim-run.lock";

// Waits until the lock is free. It is held as long as a copy of the descriptor is open.
int lock_machine()
{
    int lock = open(lock_file, O_RDWR | O_NOFOLLOW | O_CLOEXEC);
    if (lock == -1 && errno == ENOENT) {
        lock = open(lock_file, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (lock != -1)
            fchmod(lock, 0666); // whatever the umask: the next user may be another one
    }
    check_errno(lock != -1, std::string("open ") + lock_file);
    while (flock(lock, LOCK_EX) == -1)
        check_errno(errno == EINTR, std::string("lock ") + lock_file);
    return lock;
}

volatile std::sig_atomic_t worker_process = 0;

extern "C" void kill_worker(int)
{
    if (worker_process > 0)
        kill(static_cast<pid_t>(worker_process), SIGKILL);
}

// Processes that outlive the worker have become children of this one.
void kill_orphans()
{
    for (;;) {
        std::ifstream children("/proc/thread-self/children");
        pid_t child = 0;
        bool any = false;
        for (; children >> child; any = true)
            kill(child, SIGKILL);
        if (!any)
            return;
        while (waitpid(any_child, nullptr, 0) > 0 || errno == EINTR)
            continue;
    }
}

// SIGTERM means that the caller has ended: the worker is killed, and the clean-up follows. It stays
// blocked until there is a worker to kill.
int supervise(const Work &work, const InterruptsIgnored &interrupts)
{
    sigset_t termination, before;
    sigemptyset(&termination);
    sigaddset(&termination, SIGTERM);
    sigprocmask(SIG_BLOCK, &termination, &before);
    std::signal(SIGTERM, kill_worker);
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    const auto with_signals_restored = [&] {
        std::signal(SIGTERM, SIG_DFL);
        sigprocmask(SIG_SETMASK, &before, nullptr);
        return work();
    };
    const pid_t worker = start_worker(with_signals_restored, interrupts);
    worker_process = worker;
    sigprocmask(SIG_SETMASK, &before, nullptr);
    const int status = wait_for(worker, any_child);
    kill_orphans();
    return status;
}

// The counterpart of process 1 where there are no namespaces.
int unisolated_init(const Work &work, const InterruptsIgnored &interrupts, Lock lock)
try {
    const int held = lock == Lock::take ? lock_machine() : -1;
    int status = 1;
    if (!report_leftovers()) {
        const DataFolder data;
        status = supervise(work, interrupts);
        remove_leftovers();
    }
    close(held);
    return status;
} catch (const std::exception &error) {
    log_line(error.what());
    return 1;
}

} // namespace

// In a process of its own, since it handles signals and becomes the parent of orphans.
int run_unisolated(const Work &work, const InterruptsIgnored &interrupts, Lock lock)
{
    const pid_t caller = getpid();
    const pid_t init = fork();
    if (init == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != caller) // it ended before this process could learn of it
            _exit(1);
        setenv(sandbox_variable, lock_is_held, 1);
        _exit(unisolated_init(work, interrupts, lock));
    }
    return wait_for(init, init);
}

} // namespace sandbox
