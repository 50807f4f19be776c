#include "server.h"

#include <sys/stat.h>
#include <unistd.h>

namespace daemons
{

sigset_t block_termination_signals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGTERM, SIGINT}) {
        sigaddset(&signals, number);
        std::signal(number, SIG_DFL);
    }
    std::signal(SIGPIPE, SIG_IGN); // a reader of our lines may end before we do
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

bool has_store_directory(const std::string &store)
{
    struct stat found = {};
    if (mkdir(store.c_str(), S_IRWXU) == 0)
        return true;
    return lstat(store.c_str(), &found) == 0 && S_ISDIR(found.st_mode) &&
           access(store.c_str(), W_OK | X_OK) == 0;
}

} // namespace daemons
