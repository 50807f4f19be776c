// An open file descriptor, closed at the end of its scope.
#ifndef CLIENT_FILE_H
#define CLIENT_FILE_H

#include <unistd.h>
#include <utility>

namespace client
{

class File
{
public:
    File() = default;
    explicit File(int fd) : fd_(fd) {}
    File(File &&other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    File &operator=(File &&other) noexcept
    {
        std::swap(fd_, other.fd_);
        return *this;
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;
    ~File()
    {
        if (fd_ != -1)
            close(fd_);
    }

    int fd() const { return fd_; }
    explicit operator bool() const { return fd_ != -1; }

private:
    int fd_ = -1;
};

} // namespace client

#endif
