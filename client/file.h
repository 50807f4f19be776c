// An open file descriptor, closed at the end of its scope.
#ifndef CLIENT_FILE_H
#define CLIENT_FILE_H

#include <unistd.h>
#include <utility>

namespace cmifctl
{

class File
{
public:
    File() = default;
    explicit File(int number) : number_(number) {}
    File(File &&other) noexcept : number_(std::exchange(other.number_, -1)) {}
    File &operator=(File &&other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;
    ~File() { close(); }

    int number() const { return number_; }
    explicit operator bool() const { return number_ != -1; }
    void close()
    {
        if (number_ != -1)
            ::close(std::exchange(number_, -1));
    }

private:
    int number_ = -1;
};

} // namespace cmifctl

#endif
