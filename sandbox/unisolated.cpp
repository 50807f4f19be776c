#include "unisolated.h"

#include "check.h"
#include "leftovers.h"
#include "orphans.h"
#include "run_lock.h"
#include "run_mark.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <optional>
#include <sys/prctl.h>
#include <unistd.h>

namespace sandbox
{
namespace
{

constexpr const char *supervisor_name = "cmif-supervisor"; // as long as the system allows

volatile std::sig_atomic_t worker_process = 0;

extern "C" void kill_worker(int)
{
    if (worker_process > 0)
        kill(static_cast<pid_t>(worker_process), SIGKILL);
}

// SIGTERM means that the caller has ended: the worker is killed, and the clean-up follows. It stays
// blocked until there is a worker to kill. A signal to the caller's process group, SIGKILL for one,
// ends the worker and not this process, which has a group of its own.
int supervise(const Work &work, const InterruptsIgnored &interrupts)
{
    sigset_t termination, before;
    sigemptyset(&termination);
    sigaddset(&termination, SIGTERM);
    sigprocmask(SIG_BLOCK, &termination, &before);
    std::signal(SIGTERM, kill_worker);
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    const pid_t group = getpgrp();
    setpgid(0, 0);
    const auto as_the_caller = [&] {
        setpgid(0, group);
        std::signal(SIGTERM, SIG_DFL);
        sigprocmask(SIG_SETMASK, &before, nullptr);
        return work();
    };
    const pid_t worker = start_worker(as_the_caller, interrupts);
    worker_process = worker;
    sigprocmask(SIG_SETMASK, &before, nullptr);
    const int status = wait_for(worker, any_child);
    kill_orphans();
    return status;
}

int run_marked(const Work &work, const InterruptsIgnored &interrupts)
{
    if (report_leftovers())
        return 1;
    const RunMark mark;
    const DataFolder data;
    const int status = supervise(work, interrupts);
    remove_leftovers();
    return status;
}

// The counterpart of process 1 where there are no namespaces.
int unisolated_init(const Work &work, const InterruptsIgnored &interrupts, Lock lock)
try {
    std::optional<RunLock> held;
    if (lock == Lock::take) {
        held.emplace(getppid());
        clean_up_after_killed_run();
    }
    return run_marked(work, interrupts);
} catch (const std::exception &error) {
    log_line(error.what());
    return 1;
}

} // namespace

// In a process of its own, since it handles signals and becomes the parent of orphans. Its name is
// another than the program's, so that it stays to clean up when all processes of that name are
// killed at once.
int run_unisolated(const Work &work, const InterruptsIgnored &interrupts, Lock lock)
{
    const pid_t caller = getpid();
    const pid_t init = fork();
    if (init == 0) {
        end_with_parent(caller, SIGTERM);
        prctl(PR_SET_NAME, supervisor_name);
        setenv(sandbox_variable, lock_is_held, 1);
        _exit(unisolated_init(work, interrupts, lock));
    }
    return wait_for(init, init);
}

} // namespace sandbox
