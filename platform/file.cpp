#include "file.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host_store
{

File::File(const std::string &path, int flags)
    : descriptor_(open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR))
{
}

File::~File()
{
    if (descriptor_ >= 0)
        close(descriptor_);
}

bool File::is_readable_file() const
{
    constexpr off_t size_limit = 64 << 20; // more than the running configuration can hold
    struct stat found = {};
    return fstat(descriptor_, &found) == 0 && S_ISREG(found.st_mode) && found.st_size <= size_limit;
}

bool File::read_all(std::string &text) const
{
    std::array<char, 16384> part{};
    for (;;) {
        const ssize_t count = read(descriptor_, part.data(), part.size());
        if (count == 0)
            return true;
        if (count > 0)
            text.append(part.data(), static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return false;
    }
}

bool File::write_all(std::string_view text) const
{
    while (!text.empty()) {
        const ssize_t count = write(descriptor_, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return false;
    }
    return fsync(descriptor_) == 0;
}

} // namespace host_store
