// The thread of a daemon: it waits in a message queue, and ends promptly when asked to.
#ifndef DAEMONS_DAEMON_THREAD_H
#define DAEMONS_DAEMON_THREAD_H

#include "message_queue.h"

#include <atomic>
#include <functional>
#include <thread>

namespace sim
{

class DaemonThread
{
public:
    // Serves what arrives in `queue`: `serve` gets each record (a `long`, then the payload) and the
    // payload's size, at most `most_payload`.
    using Serve = std::function<void(const char *record, std::size_t payload)>;
    static constexpr std::size_t most_payload = 1024;

    DaemonThread(const MessageQueue &queue, const StopFlag &stop, Serve serve);

    // `stop` must be raised by now.
    ~DaemonThread();
    DaemonThread(const DaemonThread &) = delete;
    DaemonThread &operator=(const DaemonThread &) = delete;

private:
    void run();

    MessageQueue queue_;
    const StopFlag &stop_;
    Serve serve_;
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

} // namespace sim

#endif
