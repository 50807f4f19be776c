#include "service_lock.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sim
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
    fd_ = open(path_, flags);
    if (fd_ < 0 && errno == ENOENT) {
        fd_ = open(path_, flags | O_CREAT, 0666);
        if (fd_ >= 0)
            fchmod(fd_, 0666); // whatever the umask: the next one may be another user's
    }
    if (fd_ < 0) {
        std::fprintf(stderr, "cmif-sim: can't open %s: %s\n", path_, std::strerror(errno));
        return false;
    }
    if (flock(fd_, LOCK_EX | LOCK_NB) != 0) {
        name_holder();
        return false;
    }
    const std::string id = std::to_string(getpid()) + "\n";
    return ftruncate(fd_, 0) == 0 &&
           pwrite(fd_, id.data(), id.size(), 0) == static_cast<ssize_t>(id.size());
}

void ServiceLock::name_holder() const
{
    char id[32] = "";
    if (pread(fd_, id, sizeof id - 1, 0) > 0)
        id[strcspn(id, "\n")] = '\0';
    std::fprintf(stderr,
                 "cmif-sim: the %s queues are served already, by process %s; end that one first "
                 "(%s)\n",
                 daemon_, id[0] ? id : "of unknown number", path_);
}

} // namespace sim
