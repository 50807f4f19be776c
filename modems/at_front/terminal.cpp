#include "terminal.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace at_front
{
namespace
{

[[noreturn]] void fail(const char *step)
{
    throw std::system_error(errno, std::generic_category(), step);
}

// Bytes as they are: the modem itself echoes.
void make_raw(int slave)
{
    termios settings{};
    if (tcgetattr(slave, &settings) != 0)
        fail("read terminal settings");
    cfmakeraw(&settings);
    cfsetspeed(&settings, B115200);
    if (tcsetattr(slave, TCSANOW, &settings) != 0)
        fail("set terminal");
}

} // namespace

Terminal::Terminal() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK))
{
    char name[64];
    if (master_ == -1 || grantpt(master_) != 0 || unlockpt(master_) != 0 ||
        ptsname_r(master_, name, sizeof name) != 0)
        fail("open a pseudo-terminal");
    path_ = name;
    slave_ = open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slave_ == -1)
        fail(name);
    make_raw(slave_);
}

Terminal::~Terminal()
{
    close(slave_);
    close(master_);
}

// A program may have claimed the port for itself alone, and ended; the claim would stay.
std::string Terminal::read()
{
    char buffer[4096];
    ioctl(slave_, TIOCNXCL);
    const ssize_t size = ::read(master_, buffer, sizeof buffer);
    return size > 0 ? std::string(buffer, static_cast<std::size_t>(size)) : "";
}

void Terminal::write(std::string_view text)
{
    write_patiently(master_, text);
}

Wires terminals(std::size_t count)
{
    Wires opened;
    while (opened.size() < count)
        opened.push_back(std::make_unique<Terminal>());
    return opened;
}

} // namespace at_front
