#include "call.h"

#include "child.h"
#include "cmif/cmif.h"
#include "signals.h"
#include "trace_filter.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <poll.h>

namespace cmifctl
{

namespace
{

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr Seconds glance{0.5};

std::string number_text(double number)
{
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%g", number);
    return buffer.data();
}

const char *daemon_name(Channel channel)
{
    return channel == Channel::at ? "the AT daemon" : "the QMI daemon";
}

// Reads what is there; false at the end of the stream.
bool read_some(int file, std::string &bytes)
{
    std::array<char, 4096> buffer{};
    const ssize_t size = read(file, buffer.data(), buffer.size());
    if (size > 0)
        bytes.append(buffer.data(), static_cast<std::size_t>(size));
    return size > 0;
}

std::string fate(Withdrawal withdrawal)
{
    switch (withdrawal) {
    case Withdrawal::withdrawn:
        return "nobody had taken the request, and it has been withdrawn";
    case Withdrawal::queue_full:
        return "its request queue is full, and nothing has been sent";
    case Withdrawal::no_queue:
        return "its request queue is gone";
    case Withdrawal::not_queued:
        break;
    }
    return "the request had been taken and may still be carried out; its late answer would reach "
           "the next caller of the same request";
}

[[noreturn]] void fail_in_time(const Request &request, double seconds)
{
    const std::string in_time = " within " + number_text(seconds) + " s";
    if (request.channel == Channel::none)
        throw Failure(Exit::no_answer, std::string(request.name) + " was not done" + in_time,
                      "Check the configuration store; --timeout SECONDS waits longer.");

    const Withdrawal withdrawal = withdraw(request);
    const bool sent = withdrawal == Withdrawal::withdrawn;
    if (!sent && request.channel == Channel::qmi && access(CMIF_PROFILE_BUSY_FILE, F_OK) == 0)
        throw Failure(Exit::profile_busy,
                      std::string("a profile change is in progress and did not end") + in_time,
                      "Try again when it is done; " CMIF_PROFILE_BUSY_FILE
                      " marks it, and is left over when its writer was killed.");
    throw Failure(
        Exit::no_answer,
        std::string(daemon_name(request.channel)) + " did not answer " + request.name +
            " (request " + std::to_string(request.code) + ")" + in_time + "; " + fate(withdrawal),
        "Check that the daemon runs, then try again; --timeout SECONDS waits longer, 0 for ever.",
        {{"withdrawn", sent}});
}

// What a call marks while it runs would stay marked for ever when it is ended in between. A marker
// that was there before the call is somebody else's.
class Marker
{
public:
    explicit Marker(const char *path)
        : path_(path != nullptr && access(path, F_OK) != 0 ? path : nullptr)
    {
    }
    void remove() const
    {
        if (path_ != nullptr)
            unlink(path_);
    }

private:
    const char *path_;
};

class Waiting
{
public:
    Waiting(const Call &call, bool trace, double timeout)
        : call_(call), marker_(call.marker), child_(call, trace), filter_(call.secret),
          timeout_(timeout)
    {
    }

    Answer answer()
    {
        try {
            while ((answering_ || tracing_) && !late())
                look();
        } catch (...) { // a signal, or what the watcher threw
            end_child();
            withdraw(call_.request);
            throw;
        }
        if (answering_) {
            end_child();
            fail_in_time(call_.request, timeout_);
        }
        filter_.finish();
        const int status = child_.wait();
        if (status != 0)
            marker_.remove();
        return decoded(bytes_, status, call_);
    }

private:
    void look()
    {
        std::array<pollfd, 3> files{{{signals_.descriptor(), POLLIN, 0},
                                     {answering_ ? child_.answer() : -1, POLLIN, 0},
                                     {tracing_ ? child_.lines() : -1, POLLIN, 0}}};
        poll(files.data(), files.size(), milliseconds_to_wait());
        if (files[0].revents != 0)
            throw Interrupted{signals_.taken()};
        if (files[1].revents != 0)
            answering_ = read_some(child_.answer(), bytes_);
        if (files[2].revents != 0)
            read_lines();
        if (answering_ && call_.waiting && Clock::now() >= next_glance_) {
            call_.waiting();
            next_glance_ = Clock::now() + std::chrono::duration_cast<Clock::duration>(glance);
        }
    }

    double elapsed() const { return Seconds(Clock::now() - started_).count(); }

    bool late() const { return answering_ && timeout_ > 0 && elapsed() >= timeout_; }

    int milliseconds_to_wait() const
    {
        if (timeout_ <= 0 && !call_.waiting)
            return -1;
        double left = call_.waiting ? glance.count() : timeout_;
        if (timeout_ > 0)
            left = std::min(left, timeout_ - elapsed());
        return static_cast<int>(std::clamp(left, 0.0, 3600.0) * 1000) + 1;
    }

    void read_lines()
    {
        std::string lines;
        tracing_ = read_some(child_.lines(), lines);
        filter_.feed(lines);
    }

    void end_child()
    {
        child_.kill();
        marker_.remove();
        for (pollfd file{child_.lines(), POLLIN, 0}; tracing_ && poll(&file, 1, 0) > 0;)
            read_lines();
        filter_.finish();
    }

    const Call &call_;
    HeldSignals signals_;
    Marker marker_;
    Child child_;
    TraceFilter filter_;
    double timeout_;
    Clock::time_point started_ = Clock::now();
    Clock::time_point next_glance_ = started_;
    std::string bytes_;
    bool answering_ = true;
    bool tracing_ = child_.lines() != -1;
};

} // namespace

Answer call(const Options &options, const Call &call)
{
    return Waiting(call, options.trace, options.timeout.value_or(call.timeout)).answer();
}

} // namespace cmifctl
