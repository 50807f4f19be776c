#include "public_file.h"

#include <cstdio>
#include <err.h>
#include <sys/stat.h>
#include <unistd.h>

namespace daemons
{
namespace
{

// `name` receives the new file's name, exclusive and unpredictable: every user may write to /tmp.
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
    warn("can't write %s", path);
    unlink(temporary.c_str());
    return false;
}

} // namespace daemons
