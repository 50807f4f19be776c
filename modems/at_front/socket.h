// A port as a socket, for a ModemManager without ports of its own: each time that a program opens
// the port it connects again.
#ifndef MODEMS_AT_FRONT_SOCKET_H
#define MODEMS_AT_FRONT_SOCKET_H

#include "wire.h"

#include <mutex>

namespace at_front
{

// One connection at a time; the next one waits until that has ended.
class Socket : public Wire
{
public:
    explicit Socket(std::string path); // throws std::system_error
    ~Socket() override;

    const std::string &path() const override { return path_; }
    int file() const override;
    std::string read() override;
    void write(std::string_view text) override; // without a connection, nothing

private:
    std::string path_;
    int listening_ = -1;

    std::mutex mutex_; // of the connection, which the thread that reads opens and closes
    int connection_ = -1;
};

} // namespace at_front

#endif
