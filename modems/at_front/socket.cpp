#include "socket.h"

#include <cerrno>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace at_front
{

Socket::Socket(std::string path)
    : path_(std::move(path)), listening_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_un address{AF_UNIX, {}};
    path_.copy(address.sun_path, sizeof address.sun_path - 1);
    if (bind(listening_, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0 &&
        listen(listening_, 1) == 0)
        return;
    const int reason = errno;
    close(listening_);
    throw std::system_error(reason, std::generic_category(), path_);
}

Socket::~Socket()
{
    close(connection_);
    close(listening_);
    unlink(path_.c_str());
}

int Socket::file() const
{
    return connection_ == -1 ? listening_ : connection_;
}

std::string Socket::read()
{
    char buffer[4096];
    if (connection_ == -1) {
        const std::lock_guard lock(mutex_);
        connection_ = accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        return "";
    }
    const ssize_t size = recv(connection_, buffer, sizeof buffer, 0);
    if (size > 0)
        return {buffer, static_cast<std::size_t>(size)};
    if (size == 0 || errno != EAGAIN) {
        const std::lock_guard lock(mutex_);
        close(std::exchange(connection_, -1));
    }
    return "";
}

void Socket::write(std::string_view text)
{
    const std::lock_guard lock(mutex_);
    if (connection_ != -1)
        write_patiently(connection_, text);
}

} // namespace at_front
