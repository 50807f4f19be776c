#include "store_directory.h"

#include "error_report.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace host_store
{

namespace
{

constinit std::mutex threads;

// A fork waits for the lock: a child would go on holding it through the inherited descriptor. When
// the library is loaded, since no fork may come between this and the first use of the lock.
__attribute__((constructor)) void hold_forks_off()
{
    const int result =
        pthread_atfork([] { threads.lock(); }, [] { threads.unlock(); }, [] { threads.unlock(); });
    if (result != 0)
        complain("pthread_atfork", std::strerror(result), "do not fork while saving");
}

// Someone else's run-time directory is what `sudo` leaves in the environment.
bool is_own_directory(const char *path)
{
    struct stat found = {};
    return stat(path, &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == geteuid() &&
           access(path, W_OK | X_OK) == 0;
}

std::string choose_directory()
{
    const char *named = std::getenv("CMIF_STORE");
    if (named != nullptr && *named != '\0') {
        std::error_code ignored;
        const std::string absolute = std::filesystem::absolute(named, ignored);
        return absolute.empty() ? named : absolute;
    }
    const char *runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && *runtime == '/' && is_own_directory(runtime))
        return std::string(runtime) + "/cmif-store";
    return "/tmp/cmif-store-" + std::to_string(geteuid());
}

// A descriptor of the directory, or -1 after a complaint.
int open_directory(const std::string &path)
{
    if (mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        complain(path, std::strerror(errno), choose_another);
        return -1;
    }
    const int descriptor = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    struct stat found = {};
    if (descriptor < 0 || fstat(descriptor, &found) != 0) {
        complain(path, std::strerror(errno), choose_another);
    } else if (found.st_uid != geteuid()) {
        complain(path, "belongs to user " + std::to_string(found.st_uid) + ", not to you",
                 "set CMIF_STORE to a directory of your own");
    } else {
        return descriptor;
    }
    if (descriptor >= 0)
        close(descriptor);
    return -1;
}

} // namespace

const std::string &store_directory()
{
    // No static object: a child that is forked while a thread makes one would wait for ever.
    static constinit std::atomic<const std::string *> chosen{};
    const std::string *path = chosen;
    if (path == nullptr) {
        auto ours = std::make_unique<const std::string>(choose_directory());
        if (chosen.compare_exchange_strong(path, ours.get()))
            path = ours.release(); // outlives exit handlers
    }
    return *path;
}

DirectoryLock::DirectoryLock()
{
    threads_ = std::unique_lock(threads);
    descriptor_ = open_directory(store_directory());
    while (descriptor_ >= 0 && flock(descriptor_, LOCK_EX) != 0) {
        if (errno == EINTR)
            continue;
        complain(store_directory(), std::strerror(errno), choose_another);
        close(std::exchange(descriptor_, -1));
    }
}

DirectoryLock::~DirectoryLock()
{
    if (!held())
        return;
    flock(descriptor_, LOCK_UN); // a program started meanwhile may hold a copy of the descriptor
    close(descriptor_);
}

bool DirectoryLock::sync() const
{
    return fsync(descriptor_) == 0;
}

} // namespace host_store
