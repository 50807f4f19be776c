// The one way to the library: every call runs in a child process.
//
// A request to a daemon has its code to itself among the programs that use this: it is locked,
// replies to earlier requests are waited for and taken away, and a request that is given up is
// withdrawn if the daemon has not picked it up.
//
// A call may block forever, prints on standard output and maps the store. A child can be killed
// when time is up, and its lines are kept apart from the caller's own. The caller never opens the
// store itself, so that each child opens it afresh.
#ifndef CLIENT_CALL_H
#define CLIENT_CALL_H

#include "code_lock.h"
#include "failure.h"
#include "json.h"
#include "request.h"
#include "trace_filter.h"

#include <functional>
#include <optional>
#include <vector>

namespace client
{

struct CallOptions {
    std::optional<double> timeout{}; // seconds, 0 for no limit; overrides the call's own
    LineSink trace{};                // receives the library's lines; empty: they are dropped
    const CodeLock *lock = nullptr;  // held for several calls; a code that it lacks is locked here
};

constexpr double default_timeout = 30;

// Runs in the child. Calls the library, stores what it read in `output`, returns the result code;
// may throw a Failure, which reaches the caller.
using Body = std::function<int(Json &output)>;

struct Call {
    Request request;
    Body body;
    std::vector<RequestCode> further{}; // that the body sends after the request, each when the one
                                        // before it is answered
    double timeout = default_timeout;
    bool logs = false;               // writes the debug log; every QMI request does
    bool secret = false;             // the library's lines hold a PIN, PUK, key or password
    bool mute_stderr = false;        // standard error is dropped unless traced
    const char *marker = nullptr;    // a file that exists while the call runs
    std::function<void()> on_wait{}; // called about twice a second until the answer arrives
    const char *crash_hint = "Run it again with --trace to see how far the library got.";
};

// All that it sends.
std::vector<RequestCode> codes_of(const Call &call);

struct Answer {
    int result = 0;
    bool answered = false; // by a daemon: the result of an AT request is its own, not the library's
    Json output{};
};

// Throws a Failure when there is no answer in time or the child dies, and Interrupted on a signal.
// In both cases a request that is still queued is withdrawn.
Answer call(const CallOptions &options, const Call &call);

// Takes the locks of several codes for a sequence of calls. Throws as call() does.
CodeLock lock_codes(const CallOptions &options, const std::vector<RequestCode> &codes);

} // namespace client

#endif
