// What every program needs that serves the queues until it is ended.
#ifndef DAEMONS_SERVER_H
#define DAEMONS_SERVER_H

#include "service_lock.h"

#include <csignal>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace daemons
{

// SIGTERM and SIGINT, blocked in all threads from now on, to be waited for. They count even where a
// shell had them ignored for a background job. SIGPIPE is ignored.
sigset_t block_termination_signals();

// Holds what only one program at a time may serve, as long as this exists.
class Server
{
public:
    // Takes the locks of the two pairs of queues, "" for one that is not served, and of the store,
    // blocks the signals above, and loads the saved configuration, as a restart of a router does.
    // The signals; nothing, after a line on standard error, when that fails.
    std::optional<sigset_t> start(const std::string &at_lock, const std::string &qmi_lock);

private:
    bool take(const std::string &path, const char *what);

    std::vector<std::unique_ptr<ServiceLock>> locks_;
};

} // namespace daemons

#endif
