#include "child_process.h"

#include "sandbox/worker.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cmif_sim
{

ChildProcess::ChildProcess(const std::function<int(int)> &work)
{
    int ready[2];
    if (pipe2(ready, O_CLOEXEC) == -1)
        return;
    const pid_t parent = getpid();
    process_ = fork();
    if (process_ == 0) {
        sandbox::end_with_parent(parent, SIGTERM);
        setpgid(0, 0);
        close(ready[0]);
        std::exit(work(ready[1]));
    }
    close(ready[1]);
    char byte = 0;
    ready_ = process_ != -1 && read(ready[0], &byte, 1) == 1;
    close(ready[0]);
}

ChildProcess::~ChildProcess()
{
    constexpr int time_limit_ms = 5000;
    if (process_ == -1)
        return;
    kill(process_, SIGTERM);
    struct pollfd end = {static_cast<int>(syscall(SYS_pidfd_open, process_, 0)), POLLIN, 0};
    if (poll(&end, 1, time_limit_ms) == 0)
        kill(process_, SIGKILL);
    close(end.fd);
    waitpid(process_, nullptr, 0);
}

int become_program(const std::vector<std::string> &command, const std::string &output)
{
    std::vector<char *> arguments(command.size() + 1); // with the null pointer at the end
    for (std::size_t i = 0; i < command.size(); ++i)
        arguments[i] = const_cast<char *>(command[i].c_str());
    if (!output.empty()) {
        const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
    }
    execvp(arguments[0], arguments.data());
    std::fprintf(stderr, "cmif-sim: cannot run %s: %s\n", arguments[0], std::strerror(errno));
    return 127;
}

} // namespace cmif_sim
