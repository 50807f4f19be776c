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

namespace host_store
{
namespace
{

constinit std::mutex opening_threads, saving_threads;

// A fork waits until the lock is free: a child would keep it locked by the descriptor that it
// inherits.
__attribute__((constructor)) void block_forks()
{
    constexpr auto release = [] {
        opening_threads.unlock();
        saving_threads.unlock();
    };
    register_fork_handlers(
        [] {
            saving_threads.lock();
            opening_threads.lock();
        },
        release, release);
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

// The file of this turn, locked; -1 after reporting why not. Openers lock the directory itself.
int lock_in(int directory, Turn turn)
{
    const int file = turn == Turn::opening
                         ? directory
                         : openat(directory, "saved.conf.lock",
                                  O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
    while (file >= 0 && flock(file, LOCK_EX) != 0) {
        if (errno == EINTR)
            continue;
        const int reason = errno;
        if (file != directory)
            close(file);
        errno = reason;
        report_error(store_directory(), std::strerror(errno), store_hint);
        return -1;
    }
    if (file < 0)
        report_error(store_directory() + "/saved.conf.lock", std::strerror(errno), store_hint);
    return file;
}

} // namespace

DirectoryLock::DirectoryLock(Turn turn)
    : threads_(turn == Turn::opening ? opening_threads : saving_threads),
      directory_(open_directory(store_directory()))
{
    if (directory_ >= 0)
        locked_ = lock_in(directory_, turn);
}

DirectoryLock::~DirectoryLock()
{
    if (held())
        flock(locked_, LOCK_UN); // a child forked by other means may hold a copy of the descriptor
    if (locked_ >= 0 && locked_ != directory_)
        close(locked_);
    if (directory_ >= 0)
        close(directory_);
}

bool DirectoryLock::sync() const
{
    return fsync(directory_) == 0;
}

} // namespace host_store
