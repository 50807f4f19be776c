// The process that takes a daemon's requests off its queue. It can be stopped and killed like a
// daemon on a router, and other programs see that: the kernel names it as the queue's last reader.
#ifndef CMIF_SIM_FAULTS_DAEMON_PROCESS_H
#define CMIF_SIM_FAULTS_DAEMON_PROCESS_H

#include <atomic>
#include <cstddef>
#include <optional>
#include <sys/types.h>

namespace cmif_sim
{

// Hands one request over each time it is asked to, so that the others wait in the queue.
class DaemonProcess
{
public:
    // `name` is what ps shows. The process ends with the thread that creates this object.
    DaemonProcess(const char *name, key_t requests);
    ~DaemonProcess(); // kills it
    DaemonProcess(const DaemonProcess &) = delete;
    DaemonProcess &operator=(const DaemonProcess &) = delete;

    pid_t number() const { return process_; } // -1 once it was killed
    void send(int signal) const;
    // Returns when it is gone. receive() finds that out, in whichever thread.
    void kill();

    // Waits for a request: a `long` and at most `room` bytes of payload, whose size it returns.
    // Nothing after a signal, and when the process has ended.
    std::optional<std::size_t> receive(void *record, std::size_t room);
    bool ended() const { return ended_; } // receive() has found out

private:
    int socket_ = -1;
    std::atomic<pid_t> process_ = -1;
    bool asked_ = false;
    bool ended_ = false;
};

} // namespace cmif_sim

#endif
