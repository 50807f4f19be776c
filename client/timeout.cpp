#include "timeout.h"

#include "cmif/cmif.h"
#include "failure.h"

#include <array>
#include <cstdio>
#include <unistd.h>

namespace client
{
namespace
{

std::string within(double seconds)
{
    std::array<char, 48> buffer{};
    std::snprintf(buffer.data(), buffer.size(), " within %g s", seconds);
    return buffer.data();
}

const char *daemon_name(Channel channel)
{
    return channel == Channel::at ? "the AT daemon" : "the QMI daemon";
}

const char *describe(Withdrawal withdrawal)
{
    switch (withdrawal) {
    case Withdrawal::withdrawn:
        return "the daemon had not picked up the request; it was withdrawn";
    case Withdrawal::queue_full:
        return "its request queue is full; nothing was sent";
    case Withdrawal::no_queue:
        return "its request queue no longer exists";
    case Withdrawal::not_queued:
        break;
    }
    return "the daemon had picked up the request and may still carry it out; its late answer would "
           "reach the next caller of the same request";
}

} // namespace

void fail_timed_out(const Request &request, double seconds)
{
    if (request.channel == Channel::none)
        throw Failure(Exit::no_answer,
                      std::string(request.name) + " did not finish" + within(seconds),
                      "Check the configuration store, or wait longer with --timeout SECONDS.");

    const Withdrawal withdrawal = withdraw(request);
    const bool sent = withdrawal == Withdrawal::withdrawn;
    if (!sent && request.channel == Channel::qmi && access(CMIF_PROFILE_BUSY_FILE, F_OK) == 0)
        throw Failure(Exit::profile_busy,
                      "a profile change is in progress and did not end" + within(seconds),
                      "Try again when it has ended. It is marked by " CMIF_PROFILE_BUSY_FILE
                      ", which is left over if its writer was killed.");
    throw Failure(Exit::no_answer,
                  std::string(daemon_name(request.channel)) + " did not answer " + request.name +
                      " (request " + std::to_string(request.code) + ")" + within(seconds) + "; " +
                      describe(withdrawal),
                  "Check that the daemon is running and try again, or wait longer with --timeout "
                  "SECONDS (0 = no limit).",
                  {{"withdrawn", sent}});
}

} // namespace client
