#include "public_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace sim
{
namespace
{

// `name` receives the new file's name; an exclusive, unforeseeable one: /tmp is everybody's.
bool write_temporary(std::string &name, const std::string &text)
{
    const int fd = mkstemp(name.data());
    if (fd < 0)
        return false;
    const bool written = write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
                         fchmod(fd, 0644) == 0;
    return close(fd) == 0 && written;
}

} // namespace

bool write_public_file(const char *path, const std::string &text)
{
    std::string temporary = std::string(path) + ".XXXXXX";
    if (write_temporary(temporary, text) && std::rename(temporary.c_str(), path) == 0)
        return true;
    std::fprintf(stderr, "cmif-sim: can't write %s: %s\n", path, std::strerror(errno));
    unlink(temporary.c_str());
    return false;
}

} // namespace sim
