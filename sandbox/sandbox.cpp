#include "sandbox.h"

#include "check.h"
#include "interrupts.h"
#include "private_tree.h"
#include "unisolated.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <optional>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sim
{
namespace
{

using Work = std::function<int()>;

/* "none" asks for no name spaces; "held": a run around this one holds the shared ground already. */
constexpr const char *choice = "CMIF_SANDBOX";

int exit_status(int wait_status)
{
    return WIFSIGNALED(wait_status) ? 128 + WTERMSIG(wait_status) : WEXITSTATUS(wait_status);
}

constexpr pid_t any_child = -1;

/* Reaps children, those named by `reaped`, until `awaited` has ended. */
int wait_for(pid_t awaited, pid_t reaped)
{
    if (awaited == -1) // it could not even start
        return 1;
    int status = 0;
    for (pid_t ended = 0; ended != awaited;) {
        ended = waitpid(reaped, &status, 0);
        if (ended == -1 && errno != EINTR)
            return 1;
    }
    return exit_status(status);
}

[[noreturn]] void do_work(const Work &inside, const InterruptsIgnored &interrupts) noexcept
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    interrupts.restore();
    std::exit(inside());
}

// In name spaces of our own.

void write_file(const char *path, const std::string &text)
{
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    const bool written = file != -1 && write(file, text.data(), text.size()) != -1;
    need(written, path);
    close(file);
}

/* Whoever we were outside, inside a new user name space. */
void keep_identity(uid_t user, gid_t group)
{
    write_file("/proc/self/setgroups", "deny");
    write_file("/proc/self/uid_map", std::to_string(user) + " " + std::to_string(user) + " 1");
    write_file("/proc/self/gid_map", std::to_string(group) + " " + std::to_string(group) + " 1");
}

pid_t fork_into(int name_spaces)
{
    return static_cast<pid_t>(
        syscall(SYS_clone, name_spaces | SIGCHLD, nullptr, nullptr, nullptr, nullptr));
}

/*
 * Process 1 of the new name spaces: whatever is left over is killed when it ends. It reports an
 * empty text once it is in, else what kept it out.
 */
[[noreturn]] void guard_apart(int report, const std::function<void()> &enter, const Work &inside,
                              const InterruptsIgnored &interrupts)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::string refusal;
    try {
        enter();
    } catch (const std::exception &failure) {
        refusal = failure.what();
    }
    const bool told = write(report, refusal.c_str(), refusal.size() + 1) != -1;
    close(report);
    if (!told || !refusal.empty())
        _exit(1);
    const pid_t worker = fork();
    if (worker == 0)
        do_work(inside, interrupts);
    _exit(wait_for(worker, any_child));
}

/* The status of `inside`, or nothing, and in `refusal` why it could not run in its own. */
std::optional<int> run_apart(const Work &inside, const std::vector<std::string> &keep,
                             const InterruptsIgnored &interrupts, std::string &refusal)
{
    constexpr int wanted = CLONE_NEWNS | CLONE_NEWIPC | CLONE_NEWPID;
    const uid_t user = geteuid();
    const gid_t group = getegid();
    int report[2];
    if (pipe2(report, O_CLOEXEC) == -1) {
        refusal = std::strerror(errno);
        return std::nullopt;
    }
    bool new_user = false; // root needs no user name space, and would lose rights in one
    pid_t warden = fork_into(wanted);
    if (warden == -1) {
        refusal = std::strerror(errno);
        new_user = true;
        warden = fork_into(wanted | CLONE_NEWUSER);
    }
    if (warden == 0) {
        close(report[0]);
        const auto enter = [&] {
            if (new_user)
                keep_identity(user, group);
            enter_private_tree(keep);
        };
        guard_apart(report[1], enter, inside, interrupts);
    }
    close(report[1]);
    char answer[256] = "";
    const bool entered = read(report[0], answer, sizeof answer - 1) > 0 && answer[0] == '\0';
    close(report[0]);
    if (answer[0] != '\0')
        refusal = answer;
    const int status = wait_for(warden, warden);
    return entered ? std::optional(status) : std::nullopt;
}

// In the name spaces we stand in.

volatile std::sig_atomic_t worker_process = 0;

extern "C" void end_worker(int)
{
    if (worker_process > 0)
        kill(static_cast<pid_t>(worker_process), SIGKILL);
}

/* Orphans of the run have become our children. */
void end_leftovers()
{
    for (;;) {
        std::ifstream children("/proc/thread-self/children");
        pid_t child = 0;
        bool any = false;
        for (; children >> child; any = true)
            kill(child, SIGKILL);
        if (!any)
            return;
        while (waitpid(-1, nullptr, 0) > 0 || errno == EINTR)
            continue;
    }
}

/*
 * SIGTERM says that the caller has ended: then so does the work, and the clean-up after it goes on.
 * It waits until there is a worker to end.
 */
int guard_shared(const Work &inside, const InterruptsIgnored &interrupts)
{
    sigset_t termination, before;
    sigemptyset(&termination);
    sigaddset(&termination, SIGTERM);
    sigprocmask(SIG_BLOCK, &termination, &before);
    std::signal(SIGTERM, end_worker);
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    const pid_t worker = fork();
    if (worker == 0) {
        std::signal(SIGTERM, SIG_DFL);
        sigprocmask(SIG_SETMASK, &before, nullptr);
        do_work(inside, interrupts);
    }
    worker_process = worker;
    sigprocmask(SIG_SETMASK, &before, nullptr);
    const int status = wait_for(worker, any_child);
    end_leftovers();
    return status;
}

/* In a process of its own, since it takes signals and foster children. */
int run_shared(const Work &inside, const InterruptsIgnored &interrupts, Ground ground)
{
    const pid_t caller = getpid();
    const pid_t warden = fork();
    if (warden == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != caller) // too late to hear of its end
            _exit(1);
        setenv(choice, "held", 1);
        _exit(on_shared_ground([&] { return guard_shared(inside, interrupts); }, ground));
    }
    return wait_for(warden, warden);
}

} // namespace

int run_in_sandbox(const Work &inside, const std::vector<std::string> &keep)
{
    std::fflush(nullptr); // else every child would write what is pending, too
    const InterruptsIgnored interrupts;
    const char *chosen = std::getenv(choice);
    const std::string wish = chosen ? chosen : "";
    if (wish == "held")
        return run_shared(inside, interrupts, Ground::held_for_us);

    std::string refusal = "CMIF_SANDBOX=none";
    if (wish != "none") {
        const std::optional<int> status = run_apart(inside, keep, interrupts, refusal);
        if (status)
            return *status;
    }
    say("no name spaces (" + refusal + "): sharing this system's queues, one run at a time");
    return run_shared(inside, interrupts, Ground::ours_alone);
}

} // namespace sim
