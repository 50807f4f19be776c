// Which store the system's daemons use, in a file that every user can read.
//
// The queues are the system's and the store is a user's: a caller whose store is another one sees
// none of what the daemons publish. The file counts as long as the process that wrote it holds its
// lock, so that nothing is left over from one that was killed. Only its owner can write and lock
// it, and a daemon that starts replaces another user's file where it may: root always does.
#include "host_store.h"

#include <array>
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

// Any reader could hold a shared lock.
bool is_locked_by_owner(int fd, const struct stat &file)
{
    struct flock lock = whole_file();
    return S_ISREG(file.st_mode) && (file.st_mode & (S_IWGRP | S_IWOTH)) == 0 &&
           fcntl(fd, F_OFD_GETLK, &lock) == 0 && lock.l_type == F_WRLCK;
}

// A descriptor of a file that counts, or -1.
int open_announcement(struct stat &file)
{
    const int fd = open(path, O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (fd < 0)
        return -1;
    if (fstat(fd, &file) == 0 && is_locked_by_owner(fd, file))
        return fd;
    close(fd);
    return -1;
}

bool is_announced_by_us_or_root()
{
    struct stat file = {};
    const int fd = open_announcement(file);
    if (fd < 0)
        return false;
    close(fd);
    return file.st_uid == 0 || file.st_uid == geteuid();
}

// Others may open the file once it is complete.
bool write_announcement(int fd)
{
    struct flock lock = whole_file();
    const std::string directory = host_store_directory();
    return fcntl(fd, F_OFD_SETLK, &lock) == 0 &&
           write(fd, directory.data(), directory.size()) ==
               static_cast<ssize_t>(directory.size()) &&
           fchmod(fd, S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH) == 0;
}

} // namespace

void host_store_announce(void)
{
    if (is_announced_by_us_or_root())
        return;
    unlink(path);
    const int fd = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (fd >= 0 && !write_announcement(fd))
        close(fd);
} // the descriptor stays open until the process ends

const char *host_store_announced(void)
{
    static std::array<char, 4096> directory;
    directory[0] = '\0';
    struct stat file = {};
    const int fd = open_announcement(file);
    if (fd < 0)
        return directory.data();
    const ssize_t size = read(fd, directory.data(), directory.size() - 1);
    directory.at(size > 0 ? static_cast<std::size_t>(size) : 0) = '\0';
    close(fd);
    return directory.data();
}
