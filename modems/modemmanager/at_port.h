// A serial port of the modem for AT commands (3GPP TS 27.007), beside those that ModemManager uses.
#ifndef MODEMS_MODEMMANAGER_AT_PORT_H
#define MODEMS_MODEMMANAGER_AT_PORT_H

#include "daemons/cme_error.h"

#include <chrono>
#include <mutex>
#include <string>
#include <vector>

namespace modem_manager
{

using daemons::CmeError;

struct AtAnswer {
    CmeError error = CmeError::ok;
    std::vector<std::string> lines; // before the final one
};

// Open during a command only, so that the modem may come and go. Any thread may call.
class AtPort
{
public:
    // `verbose` prints each command on standard error. An empty path is no port at all: every
    // command is not_supported.
    AtPort(std::string path, bool verbose);
    ~AtPort();
    AtPort(const AtPort &) = delete;
    AtPort &operator=(const AtPort &) = delete;

    explicit operator bool() const { return !path_.empty(); }
    const std::string &path() const { return path_; }

    // Sends AT and the command, and waits for the end of the answer. A secret command stays out of
    // the log. no_connection_to_phone when the port can't be used, phone_failure when no answer
    // comes in time.
    AtAnswer send(const std::string &command, bool secret = false,
                  std::chrono::milliseconds limit = std::chrono::seconds(60));

    // Ends commands in progress, and lets no other begin.
    void stop();

private:
    AtAnswer exchange(int port, const std::string &command, std::chrono::milliseconds limit) const;
    void log(const char *direction, const std::string &text) const;

    std::string path_;
    bool verbose_;
    int stop_event_;
    std::mutex mutex_; // one command at a time
};

} // namespace modem_manager

#endif
