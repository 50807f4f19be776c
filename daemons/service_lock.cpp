#include "service_lock.h"

#include <cerrno>
#include <err.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace daemons
{

ServiceLock::~ServiceLock()
{
    if (fd_ >= 0)
        close(fd_);
}

// An existing file is opened without O_CREAT: another user's file in /tmp may refuse to be created.
bool ServiceLock::take()
{
    constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW;
    fd_ = open(path_.c_str(), flags);
    if (fd_ < 0 && errno == ENOENT) {
        fd_ = open(path_.c_str(), flags | O_CREAT, 0666);
        if (fd_ >= 0)
            fchmod(fd_, 0666); // whatever the umask: the next server may be another user's
    }
    if (fd_ >= 0 && lockf(fd_, F_TLOCK, 0) == 0)
        return true;
    if (fd_ >= 0 && (errno == EACCES || errno == EAGAIN))
        name_holder();
    else
        warn("can't lock %s", path_.c_str());
    return false;
}

// The number of a process in another sandbox means nothing here.
void ServiceLock::name_holder() const
{
    struct flock lock = {}; // of the whole file
    lock.l_type = F_WRLCK;
    const bool known = fcntl(fd_, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK && lock.l_pid > 0;
    warnx("%s already served by %s; stop it first (%s)", what_,
          known ? ("process " + std::to_string(lock.l_pid)).c_str() : "another sandbox",
          path_.c_str());
}

} // namespace daemons
