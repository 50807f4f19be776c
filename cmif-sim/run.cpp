#include "run.h"

#include "sandbox/interrupts.h"
#include "sandbox/sandbox.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace cmif_sim
{
namespace
{

using namespace sim;

namespace fs = std::filesystem;

constexpr const char *store_variable = "CMIF_STORE";
constexpr const char *own_store_variable = "CMIF_STORE_OF_RUN"; // tells ours from a user's choice

/* The store that the user wants, "" for none. That of a run around this one serves that one only.
 */
std::string chosen_store()
{
    const char *store = std::getenv(store_variable);
    const char *own = std::getenv(own_store_variable);
    const bool chosen = store != nullptr && (own == nullptr || std::strcmp(store, own) != 0);
    return chosen ? store : "";
}

/* The configuration store of this run, unless the user chose one. */
class OwnStore
{
public:
    OwnStore()
    {
        made_ = chosen_store().empty() && mkdtemp(folder_.data()) != nullptr;
        for (const char *variable : {store_variable, own_store_variable})
            if (made_)
                setenv(variable, folder_.c_str(), 1);
    }
    ~OwnStore()
    {
        std::error_code ignored;
        if (made_)
            fs::remove_all(folder_, ignored);
    }
    OwnStore(const OwnStore &) = delete;
    OwnStore &operator=(const OwnStore &) = delete;

private:
    std::string folder_ = "/tmp/cmif-store-XXXXXX";
    bool made_ = false;
};

/* Modem and daemons in a process of their own, out of reach of the terminal's interrupt. */
class Router
{
public:
    explicit Router(const ServerOptions &options)
    {
        int ready[2];
        if (pipe2(ready, O_CLOEXEC) == -1)
            return;
        process_ = fork();
        if (process_ == 0) {
            prctl(PR_SET_PDEATHSIG, SIGTERM);
            setpgid(0, 0);
            close(ready[0]);
            std::exit(serve(options, ready[1]));
        }
        close(ready[1]);
        char byte = 0;
        answers_ = process_ != -1 && read(ready[0], &byte, 1) == 1;
        close(ready[0]);
    }
    ~Router()
    {
        constexpr int patience_ms = 5000;
        if (process_ == -1)
            return;
        kill(process_, SIGTERM);
        struct pollfd end = {static_cast<int>(syscall(SYS_pidfd_open, process_, 0)), POLLIN, 0};
        if (poll(&end, 1, patience_ms) == 0)
            kill(process_, SIGKILL);
        close(end.fd);
        waitpid(process_, nullptr, 0);
    }
    Router(const Router &) = delete;
    Router &operator=(const Router &) = delete;

    bool answers() const { return answers_; }

private:
    pid_t process_ = -1;
    bool answers_ = false;
};

/* Out here, before the sandbox hides where we came from. */
fs::path program_folder()
{
    std::error_code no_proc;
    return fs::read_symlink("/proc/self/exe", no_proc).parent_path();
}

/* Lets `cmifctl` be found beside this program. */
void extend_path(const fs::path &folder)
{
    const char *path = std::getenv("PATH");
    if (!folder.empty())
        setenv("PATH", (folder.string() + ":" + (path ? path : "/usr/bin:/bin")).c_str(), 1);
}

/* Hands the terminal to the process group of `owner`, as a shell does with its jobs. */
void give_terminal(pid_t owner)
{
    const auto stop = std::signal(SIGTTOU, SIG_IGN);
    tcsetpgrp(STDIN_FILENO, owner);
    std::signal(SIGTTOU, stop);
}

bool holds_terminal()
{
    return isatty(STDIN_FILENO) != 0 && tcgetpgrp(STDIN_FILENO) == getpgrp();
}

[[noreturn]] void become_shell()
{
    const char *chosen = std::getenv("SHELL");
    const char *shell = chosen && access(chosen, X_OK) == 0 ? chosen : "/bin/sh";
    if (holds_terminal()) {
        std::fprintf(stderr, "cmif-sim: a shell beside a simulated router; try `cmifctl status`. "
                             "/tmp and /data are its own. `exit` ends both.\n");
        setpgid(0, 0);
        give_terminal(getpid());
    }
    execl(shell, shell, nullptr);
    std::fprintf(stderr, "cmif-sim: cannot run %s: %s\n", shell, std::strerror(errno));
    std::_Exit(127);
}

[[noreturn]] void become(const std::vector<std::string> &command)
{
    std::vector<char *> arguments(command.size() + 1); // with the null pointer that ends them
    for (std::size_t i = 0; i < command.size(); ++i)
        arguments[i] = const_cast<char *>(command[i].c_str());
    execvp(arguments[0], arguments.data());
    const int reason = errno;
    std::fprintf(stderr, "cmif-sim: cannot run %s: %s\n", arguments[0], std::strerror(reason));
    std::_Exit(reason == ENOENT ? 127 : 126);
}

int run_command(const std::vector<std::string> &command)
{
    const InterruptsIgnored interrupts;
    const pid_t process = fork();
    if (process == 0) {
        interrupts.restore();
        if (command.empty())
            become_shell();
        become(command);
    }
    int status = 0;
    while (process != -1 && waitpid(process, &status, 0) == -1 && errno == EINTR)
        continue;
    if (process == -1)
        return 1;
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

int run_inside(const ServerOptions &options, const std::vector<std::string> &command)
{
    const OwnStore store;
    const Router router(options);
    if (!router.answers()) {
        std::fprintf(stderr, "cmif-sim: the simulated router did not start\n");
        return 1;
    }
    return run_command(command);
}

} // namespace

int run(const ServerOptions &options, const std::vector<std::string> &command)
{
    std::vector<std::string> keep;
    if (const std::string store = chosen_store(); !store.empty()) {
        mkdir(store.c_str(), S_IRWXU); // a new one has to exist to be kept in sight
        keep.push_back(fs::absolute(store));
    }
    const fs::path beside = program_folder();
    const bool terminal = holds_terminal();
    const int status = run_in_sandbox(
        [&] {
            extend_path(beside);
            return run_inside(options, command);
        },
        keep);
    if (terminal)
        give_terminal(getpgrp());
    return status;
}

} // namespace cmif_sim
