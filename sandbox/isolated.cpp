#include "isolated.h"

#include "check.h"
#include "private_tree.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace sandbox
{
namespace
{

constexpr int namespaces = CLONE_NEWNS | CLONE_NEWIPC | CLONE_NEWPID;

void write_file(const char *path, const std::string &text)
{
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    const bool written = file != -1 && write(file, text.data(), text.size()) != -1;
    check_errno(written, path);
    close(file);
}

// Gives this process, in a new user namespace, the user and group that it has outside.
void map_identity(uid_t user, gid_t group)
{
    write_file("/proc/self/setgroups", "deny");
    write_file("/proc/self/uid_map", std::to_string(user) + " " + std::to_string(user) + " 1");
    write_file("/proc/self/gid_map", std::to_string(group) + " " + std::to_string(group) + " 1");
}

pid_t fork_into(int new_namespaces)
{
    return static_cast<pid_t>(
        syscall(SYS_clone, new_namespaces | SIGCHLD, nullptr, nullptr, nullptr, nullptr));
}

std::string error_of(const std::function<void()> &step)
{
    try {
        step();
    } catch (const std::exception &error) {
        return error.what();
    }
    return "";
}

// Process 1 of the new namespaces: when it ends, the system kills every process left in them. It
// reports "" once it is inside, else the reason why it can't be.
[[noreturn]] void isolated_init(int report, const std::function<void()> &enter, const Work &work,
                                const InterruptsIgnored &interrupts) noexcept
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const std::string refusal = error_of(enter);
    const bool reported = write(report, refusal.c_str(), refusal.size() + 1) != -1;
    close(report);
    if (!reported || !refusal.empty())
        _exit(1);
    _exit(wait_for(start_worker(work, interrupts), any_child));
}

// Whether init reports that it is inside; if it reports a reason why not, `refusal` receives it.
bool is_inside(int report, std::string &refusal)
{
    char text[256] = "";
    ssize_t size;
    do
        size = read(report, text, sizeof text - 1);
    while (size == -1 && errno == EINTR);
    if (text[0] != '\0')
        refusal = text;
    return size > 0 && text[0] == '\0';
}

} // namespace

// Root is not given a user namespace, where it would lose rights; others can't do without.
std::optional<int> run_isolated(const Work &work, const std::vector<std::string> &visible_paths,
                                const InterruptsIgnored &interrupts, std::string &refusal)
{
    const uid_t user = geteuid();
    const gid_t group = getegid();
    int report[2];
    if (pipe2(report, O_CLOEXEC) == -1) {
        refusal = std::strerror(errno);
        return std::nullopt;
    }
    bool new_user = false;
    pid_t init = fork_into(namespaces);
    if (init == -1) {
        refusal = std::strerror(errno);
        new_user = true;
        init = fork_into(namespaces | CLONE_NEWUSER);
    }
    if (init == 0) {
        close(report[0]);
        const auto enter = [&] {
            if (new_user)
                map_identity(user, group);
            enter_private_tree(visible_paths);
        };
        isolated_init(report[1], enter, work, interrupts);
    }
    close(report[1]);
    const bool inside = is_inside(report[0], refusal);
    close(report[0]);
    const int status = wait_for(init, init);
    return inside ? std::optional(status) : std::nullopt;
}

} // namespace sandbox
