// A connection to a D-Bus daemon, for one thread.
#ifndef CMIF_SIM_USB_DBUS_CONNECTION_H
#define CMIF_SIM_USB_DBUS_CONNECTION_H

#include "dbus_message.h"

#include <chrono>
#include <deque>

namespace cmif_sim
{

// Everything throws std::exception when the bus can't be reached, or has gone.
class DbusConnection
{
public:
    explicit DbusConnection(const std::string &path); // of the bus's socket
    ~DbusConnection();
    DbusConnection(const DbusConnection &) = delete;
    DbusConnection &operator=(const DbusConnection &) = delete;

    // How long an answer or message is waited for.
    void limit(std::chrono::seconds time) const;

    void take_name(const char *name);
    void ask_for(const std::string &rule); // messages to others, as D-Bus matches them

    // The answer, also a failure. Other messages that come meanwhile are kept for receive().
    DbusMessage call(DbusMessage message);
    std::uint32_t send(DbusMessage message); // the number that an answer refers to
    DbusMessage receive();

    // Lets a receive() in another thread fail.
    void end() const;

private:
    void authenticate();
    void write(std::string_view bytes) const;
    std::string read(std::size_t size) const;
    DbusMessage read_message() const;

    int file_;
    std::uint32_t serial_ = 0;
    std::deque<DbusMessage> kept_;
};

// A call of the bus itself.
DbusMessage call_of_bus(const char *member);

} // namespace cmif_sim

#endif
