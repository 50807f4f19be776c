#include "enter.h"

#include "check.h"
#include "interrupts.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace sandbox
{
namespace
{

namespace fs = std::filesystem;

fs::path folder_of(pid_t process)
{
    return "/proc/" + std::to_string(process);
}

bool shares(pid_t process, const char *kind)
{
    std::error_code missing;
    return fs::read_symlink(folder_of(process) / "ns" / kind, missing) ==
           fs::read_symlink(folder_of(getpid()) / "ns" / kind, missing);
}

// The first process in the sandbox is the runner's child; 0 if it has none.
pid_t first_child(pid_t runner)
{
    pid_t child = 0;
    std::ifstream(folder_of(runner) / "task" / std::to_string(runner) / "children") >> child;
    return child;
}

void join(pid_t init)
{
    const fs::path here = fs::current_path();
    const int process = static_cast<int>(syscall(SYS_pidfd_open, init, 0));
    check_errno(process != -1, "open process " + std::to_string(init));
    const int user = shares(init, "user") ? 0 : CLONE_NEWUSER;
    check_errno(setns(process, user | CLONE_NEWNS | CLONE_NEWIPC | CLONE_NEWPID) == 0,
                "join the namespaces of process " + std::to_string(init));
    close(process);
    if (chdir(here.c_str()) != 0)
        check_errno(chdir("/") == 0, "change to /");
}

int join_and_work(pid_t runner, const Work &work)
try {
    const pid_t init = first_child(runner);
    if (init != 0 && !shares(init, "mnt"))
        join(init);
    return work();
} catch (const std::exception &error) {
    log_line(error.what());
    return 1;
}

} // namespace

// Without the work that sanitizers do at an exit, which needs a thread.
int enter_sandbox(pid_t runner, const Work &work)
{
    std::fflush(nullptr);
    const InterruptsIgnored interrupts;
    const pid_t child = fork();
    if (child == 0) {
        interrupts.restore();
        const int status = join_and_work(runner, work);
        std::fflush(nullptr);
        _exit(status);
    }
    return wait_for(child, child);
}

} // namespace sandbox
