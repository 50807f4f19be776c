// Daemons that answer each record at once by the same record, and the steps of a request to them,
// written by hand.
#ifndef BENCH_DAEMON_H
#define BENCH_DAEMON_H

#include <sys/ipc.h>

namespace bench
{

constexpr int queue_flags = IPC_CREAT | 0666;

void serve_at_requests();
void serve_qmi_calls(); // the readiness marker must be there before a call

// Runs one of them in a child while this object lives.
class Daemon
{
public:
    explicit Daemon(void (*serve)());
    ~Daemon();
    Daemon(const Daemon &) = delete;
    Daemon &operator=(const Daemon &) = delete;

private:
    int child_;
};

// An AT request of `code` without fields.
void at_request_by_hand(int code);

} // namespace bench

#endif
