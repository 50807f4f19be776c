#include "router.h"

#include "sandbox/worker.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cmif_sim
{

Router::Router(const ServerOptions &options)
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
        std::exit(serve(options, ready[1]));
    }
    close(ready[1]);
    char byte = 0;
    ready_ = process_ != -1 && read(ready[0], &byte, 1) == 1;
    close(ready[0]);
}

Router::~Router()
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

} // namespace cmif_sim
