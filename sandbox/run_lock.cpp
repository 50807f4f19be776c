#include "run_lock.h"

#include "check.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sandbox
{
namespace
{

constexpr const char *lock_file = "/tmp/cmif-sim-run.lock";

// An existing file is opened without O_CREAT: another user's file in /tmp may refuse to be created.
int open_lock()
{
    constexpr int flags = O_RDWR | O_NOFOLLOW | O_CLOEXEC;
    int lock = open(lock_file, flags);
    if (lock == -1 && errno == ENOENT) {
        lock = open(lock_file, flags | O_CREAT, 0666);
        if (lock != -1)
            fchmod(lock, 0666); // whatever the umask: the next user may be another one
    }
    check_errno(lock != -1, std::string("open ") + lock_file);
    return lock;
}

bool try_lock(int lock)
{
    constexpr int tries = 50; // a run that has just been ended cleans up
    for (int i = 0; i < tries; ++i) {
        if (flock(lock, LOCK_EX | LOCK_NB) == 0)
            return true;
        usleep(10'000);
    }
    return false;
}

void print_holder(int lock)
{
    char text[32] = "";
    const bool read = pread(lock, text, sizeof text - 1, 0) > 0;
    const long holder = read ? std::strtol(text, nullptr, 10) : 0;
    log_line(std::string("waiting for another run to end") +
             (holder > 0 ? ", that of process " + std::to_string(holder) : "") + " (" + lock_file +
             ")");
}

void name_holder(int lock, pid_t run)
{
    const std::string text = std::to_string(run) + "\n";
    const bool written = ftruncate(lock, 0) == 0 && pwrite(lock, text.data(), text.size(), 0) != -1;
    if (!written)
        (void)!ftruncate(lock, 0); // on a full disk, waiting runs print no number
}

} // namespace

RunLock::RunLock(pid_t run) : file_(open_lock())
{
    if (!try_lock(file_)) {
        print_holder(file_);
        while (flock(file_, LOCK_EX) == -1)
            check_errno(errno == EINTR, std::string("lock ") + lock_file);
    }
    name_holder(file_, run);
}

RunLock::~RunLock()
{
    close(file_);
}

} // namespace sandbox
