#include "service_lock.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sim
{
namespace
{

struct flock whole_file()
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

} // namespace

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
            fchmod(fd_, 0666); // whatever the umask: the next one may be another user's
    }
    struct flock lock = whole_file();
    if (fd_ >= 0 && fcntl(fd_, F_SETLK, &lock) == 0)
        return true;
    if (fd_ >= 0 && (errno == EACCES || errno == EAGAIN))
        name_holder();
    else
        std::fprintf(stderr, "cmif-sim: can't lock %s: %s\n", path_.c_str(), std::strerror(errno));
    return false;
}

// A process of another sandbox has no number here.
void ServiceLock::name_holder() const
{
    struct flock lock = whole_file();
    const bool known = fcntl(fd_, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK && lock.l_pid > 0;
    std::fprintf(stderr, "cmif-sim: %s served already, by %s; end that one first (%s)\n", what_,
                 known ? ("process " + std::to_string(lock.l_pid)).c_str() : "another sandbox",
                 path_.c_str());
}

} // namespace sim
