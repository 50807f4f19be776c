#include "dbus_connection.h"

#include <cerrno>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace cmif_sim
{

DbusConnection::DbusConnection(const std::string &path)
    : file_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_un address{AF_UNIX, {}};
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    if (connect(file_, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        const int reason = errno;
        close(file_);
        throw std::system_error(reason, std::generic_category(), path);
    }
    authenticate();
    call(call_of_bus("Hello"));
}

DbusConnection::~DbusConnection()
{
    close(file_);
}

// By the user that the socket shows.
void DbusConnection::authenticate()
{
    std::string user;
    for (const char digit : std::to_string(geteuid()))
        user.append(1, '3').append(1, digit); // in hexadecimal
    write(std::string(1, '\0') + "AUTH EXTERNAL " + user + "\r\n");
    std::string answer;
    while (!answer.ends_with("\r\n"))
        answer += read(1);
    if (!answer.starts_with("OK "))
        throw std::runtime_error("the D-Bus daemon refuses this user");
    write("BEGIN\r\n");
}

void DbusConnection::limit(std::chrono::seconds time) const
{
    const timeval limit{static_cast<time_t>(time.count()), 0};
    setsockopt(file_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
}

void DbusConnection::take_name(const char *name)
{
    DbusMessage request = call_of_bus("RequestName");
    DbusBody body;
    body.add_text(name);
    body.add_number(0);
    request.signature = "su";
    request.body = body.bytes();
    call(request);
}

void DbusConnection::ask_for(const std::string &rule)
{
    DbusMessage request = call_of_bus("AddMatch");
    DbusBody body;
    body.add_text(rule);
    request.signature = "s";
    request.body = body.bytes();
    call(request);
}

DbusMessage DbusConnection::call(DbusMessage message)
{
    const std::uint32_t serial = send(std::move(message));
    for (;;) {
        DbusMessage answer = read_message();
        if (answer.reply_to == serial)
            return answer;
        kept_.push_back(std::move(answer));
    }
}

std::uint32_t DbusConnection::send(DbusMessage message)
{
    message.serial = ++serial_;
    write(bytes_of(message));
    return message.serial;
}

DbusMessage DbusConnection::receive()
{
    if (kept_.empty())
        return read_message();
    DbusMessage first = std::move(kept_.front());
    kept_.pop_front();
    return first;
}

DbusMessage DbusConnection::read_message() const
{
    const std::string start = read(dbus_start_size);
    const std::size_t size = size_of_message(start);
    if (size < start.size())
        throw std::runtime_error("no D-Bus message");
    return parse_message(start + read(size - start.size()));
}

void DbusConnection::end() const
{
    shutdown(file_, SHUT_RDWR);
}

void DbusConnection::write(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t size = ::send(file_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (size <= 0)
            throw std::system_error(errno, std::generic_category(), "the D-Bus daemon");
        bytes.remove_prefix(static_cast<std::size_t>(size));
    }
}

std::string DbusConnection::read(std::size_t size) const
{
    std::string bytes(size, '\0');
    if (size > 0 && recv(file_, bytes.data(), size, MSG_WAITALL) != static_cast<ssize_t>(size))
        throw std::runtime_error("the D-Bus daemon has ended");
    return bytes;
}

DbusMessage call_of_bus(const char *member)
{
    DbusMessage message;
    message.path = "/org/freedesktop/DBus";
    message.interface = message.destination = "org.freedesktop.DBus";
    message.member = member;
    return message;
}

} // namespace cmif_sim
