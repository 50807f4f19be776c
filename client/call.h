// The one way to the library: every call runs in a child process of its own.
//
// A call may block for ever, prints on standard output and writes into the store's mapping. In a
// child it can be ended when time is up, its lines are kept apart from the tool's, and the parent
// never opens the store, so that each child opens it afresh.
#ifndef CLIENT_CALL_H
#define CLIENT_CALL_H

#include "failure.h"
#include "request.h"

#include <functional>
#include <optional>
#include <string>

namespace cmifctl
{

struct Options {
    bool json = false;
    bool trace = false;
    std::optional<double> timeout{}; // seconds; 0 waits for ever
};

constexpr double default_timeout = 30;
constexpr double scan_timeout = 180;
constexpr double status_timeout = 3; // of what is shown when it is there, and left out when not

// Runs in the child. Calls the library, leaves what it read in `output`, returns the result code;
// may throw a Failure, which reaches the parent.
using Body = std::function<int(Json &output)>;

struct Call {
    Request request;
    Body body;
    double timeout = default_timeout; // unless the user says
    bool logs = false;                // writes the debug log; every QMI request does
    bool secret = false;              // the library's lines hold what nobody may see
    bool errors_muted = false;        // the call's standard error says nothing new
    const char *marker = nullptr;     // a file that is there while the call runs
    std::function<void()> waiting{};  // called about twice a second meanwhile
    const char *if_it_dies = "Try again with --trace to see how far the library came.";
};

struct Answer {
    int result = 0;
    Json output{};
};

// Fails when there is no answer in time or the child dies; throws Interrupted on a signal. Either
// way a request that nobody took is withdrawn.
Answer call(const Options &options, const Call &call);

} // namespace cmifctl

#endif
