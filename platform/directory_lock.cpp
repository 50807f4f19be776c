#include "directory_lock.h"

#include "error_report.h"
#include "fork_handlers.h"
#include "store_directory.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace host_store
{
namespace
{

constinit std::mutex threads;

// A fork waits until the lock is free: a child would keep it locked by the descriptor that it
// inherits.
__attribute__((constructor)) void block_forks()
{
    register_fork_handlers([] { threads.lock(); }, [] { threads.unlock(); },
                           [] { threads.unlock(); });
}

bool is_own(int descriptor, const std::string &path)
{
    struct stat found = {};
    if (fstat(descriptor, &found) != 0) {
        report_error(path, std::strerror(errno), store_hint);
        return false;
    }
    if (found.st_uid == geteuid())
        return true;
    report_error(path, "belongs to user " + std::to_string(found.st_uid) + ", not to you",
                 "set CMIF_STORE to a directory of your own");
    return false;
}

// A descriptor of the directory, or -1 after reporting why not. A symbolic link is refused: in /tmp
// another user may have placed it, to a directory that is ours but not meant for the store.
int open_directory(const std::string &path)
{
    if (mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        report_error(path, std::strerror(errno), store_hint);
        return -1;
    }
    const int descriptor = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        report_error(path, std::strerror(errno), store_hint);
        return -1;
    }
    if (is_own(descriptor, path))
        return descriptor;
    close(descriptor);
    return -1;
}

} // namespace

DirectoryLock::DirectoryLock() : threads_(threads), descriptor_(open_directory(store_directory()))
{
    while (descriptor_ >= 0 && flock(descriptor_, LOCK_EX) != 0) {
        if (errno == EINTR)
            continue;
        report_error(store_directory(), std::strerror(errno), store_hint);
        close(std::exchange(descriptor_, -1));
    }
}

DirectoryLock::~DirectoryLock()
{
    if (!held())
        return;
    flock(descriptor_, LOCK_UN); // a child forked by other means may hold a copy of the descriptor
    close(descriptor_);
}

bool DirectoryLock::sync() const
{
    return fsync(descriptor_) == 0;
}

} // namespace host_store
