#include "wire.h"

#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace at_front
{
namespace
{

ssize_t write_some(int file, std::string_view text)
{
    const ssize_t sent = send(file, text.data(), text.size(), MSG_NOSIGNAL);
    return sent == -1 && errno == ENOTSOCK ? write(file, text.data(), text.size()) : sent;
}

} // namespace

void write_patiently(int file, std::string_view text)
{
    constexpr int patience = 1000; // milliseconds
    while (!text.empty()) {
        const ssize_t size = write_some(file, text);
        if (size > 0) {
            text.remove_prefix(static_cast<std::size_t>(size));
            continue;
        }
        pollfd room{file, POLLOUT, 0};
        if (errno != EAGAIN || poll(&room, 1, patience) <= 0)
            return;
    }
}

} // namespace at_front
