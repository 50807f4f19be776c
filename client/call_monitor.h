// Watches the child that runs a call: its answer, its lines, the time, and signals to this process.
#ifndef CLIENT_CALL_MONITOR_H
#define CLIENT_CALL_MONITOR_H

#include "call.h"
#include "child.h"
#include "signals.h"

#include <chrono>
#include <string>

namespace client
{

// The file that a call creates while it runs. It would stay forever when the call is killed, so it
// is removed then, unless it existed before: then it belongs to another process. What is not a
// regular file is refused: creating the marker would write into it.
class Marker
{
public:
    explicit Marker(const char *path);
    void remove() const;
    const char *path() const { return path_; } // null unless it is this call's

private:
    const char *path_;
};

class CallMonitor
{
public:
    CallMonitor(const CallOptions &options, const Call &call);

    // Blocks until the child has answered and ended, or time is up.
    Answer wait_for_answer();

private:
    using Clock = std::chrono::steady_clock;

    void wait_for_earlier_replies(RequestCode code);
    Request sent_request() const;
    void poll_until_done();
    void poll_once();
    void report_waiting();
    void read_lines();
    void end_child();
    void withdraw_request();
    double elapsed() const;
    bool timed_out() const;
    int poll_milliseconds() const;

    const Call &call_;
    double timeout_;
    Clock::time_point started_ = Clock::now();
    Clock::time_point next_report_ = started_;
    HeldSignals signals_;
    std::optional<CodeLock> lock_;
    std::optional<Unanswered> unanswered_; // of a call that sends a request
    SentRecord sent_;
    Marker marker_;
    std::optional<Child> child_;
    TraceFilter filter_;
    std::string bytes_;
    bool answering_ = true;
    bool tracing_;
};

} // namespace client

#endif
