// Which store the system's daemons use, in a file that every user can read.
//
// The queues are the system's and the store is a user's: a caller whose store is another one sees
// none of what the daemons publish. The file counts as long as the process that wrote it holds its
// lock, so that nothing is left over from one that was killed.
#include "host_store.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr const char *path = "/tmp/cmif-store-in-use";

struct flock whole_file()
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

// An existing file is opened without O_CREAT: another user's file in /tmp may refuse to be created.
int open_to_write()
{
    constexpr int flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    int fd = open(path, flags);
    if (fd < 0 && errno == ENOENT) {
        fd = open(path, flags | O_CREAT, 0666);
        if (fd >= 0)
            fchmod(fd, 0666); // whatever the umask: the next daemon may be another user's
    }
    return fd;
}

} // namespace

void host_store_announce(void)
{
    const int fd = open_to_write(); // stays open until the process ends
    struct flock lock = whole_file();
    if (fd < 0 || fcntl(fd, F_OFD_SETLK, &lock) != 0) {
        if (fd >= 0)
            close(fd);
        return;
    }
    const std::string directory = host_store_directory();
    const bool written = ftruncate(fd, 0) == 0 && write(fd, directory.data(), directory.size()) ==
                                                      static_cast<ssize_t>(directory.size());
    if (!written)
        close(fd);
}

const char *host_store_announced(void)
{
    static std::array<char, 4096> directory;
    directory[0] = '\0';
    const int fd = open(path, O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (fd < 0)
        return directory.data();
    struct flock lock = whole_file();
    if (fcntl(fd, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK) {
        const ssize_t size = read(fd, directory.data(), directory.size() - 1);
        directory.at(size > 0 ? static_cast<std::size_t>(size) : 0) = '\0';
    }
    close(fd);
    return directory.data();
}
