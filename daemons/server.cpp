#include "server.h"

#include "platform/host_store.h"

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

namespace
{

// Creates the store's directory if it is missing. False when it can't be used, or is a symbolic
// link: the store reports that itself.
bool has_store_directory(const std::string &store)
{
    struct stat found = {};
    if (mkdir(store.c_str(), S_IRWXU) == 0)
        return true;
    return lstat(store.c_str(), &found) == 0 && S_ISDIR(found.st_mode) &&
           access(store.c_str(), W_OK | X_OK) == 0;
}

} // namespace

std::optional<sigset_t> Server::start(const std::string &at_lock, const std::string &qmi_lock)
{
    if (!take(at_lock, "the AT queues are") || !take(qmi_lock, "the QMI queues are"))
        return std::nullopt;
    // Two modems in one store would overwrite each other's values.
    const std::string store = host_store_directory();
    if (has_store_directory(store) && !take(store + "/router.lock", "the store is"))
        return std::nullopt;
    const sigset_t signals = block_termination_signals();
    if (host_store_power_cycle() != 0)
        return std::nullopt;
    host_store_announce();
    return signals;
}

bool Server::take(const std::string &path, const char *what)
{
    if (path.empty())
        return true;
    locks_.push_back(std::make_unique<ServiceLock>(path, what));
    return locks_.back()->take();
}

} // namespace daemons
