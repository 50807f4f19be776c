// The thread of a daemon: it serves the requests of a link, and ends promptly when asked to.
#ifndef DAEMONS_DAEMON_THREAD_H
#define DAEMONS_DAEMON_THREAD_H

#include "link.h"

#include <atomic>
#include <functional>
#include <thread>

namespace daemons
{

class DaemonThread
{
public:
    // Calls `serve` with each record that arrives by `link` (a `long`, then the payload) and its
    // payload's size, at most `max_payload`.
    using Serve = std::function<void(const char *record, std::size_t payload)>;
    static constexpr std::size_t max_payload = 1024;

    DaemonThread(Link &link, const StopFlag &stop, Serve serve);

    // `stop` must be raised by now.
    ~DaemonThread();
    DaemonThread(const DaemonThread &) = delete;
    DaemonThread &operator=(const DaemonThread &) = delete;

private:
    void run();

    Link &link_;
    const StopFlag &stop_;
    Serve serve_;
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

} // namespace daemons

#endif
