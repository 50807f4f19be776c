#include "timeout.h"

#include "cmif/cmif.h"
#include "failure.h"
#include "json.h"
#include "process.h"
#include "queues.h"

#include <cmath>
#include <sys/stat.h>
#include <unistd.h>

namespace client
{
namespace
{

constexpr const char *check_daemon =
    "Check that the daemon is running ('cmifctl doctor') and try again, or wait longer with "
    "--timeout SECONDS (0 = no limit).";

const char *describe(Withdrawal withdrawal)
{
    switch (withdrawal) {
    case Withdrawal::withdrawn:
        return "the daemon had not picked up the request; it was withdrawn";
    case Withdrawal::nothing_sent:
        return "nothing was sent";
    case Withdrawal::kept:
        return "the request still waits behind another one of its code, and the daemon may still "
               "carry it out";
    case Withdrawal::queue_gone:
        return "its request queue no longer exists";
    case Withdrawal::unknown:
        return "this kernel does not let a program look into a queue, so the request was left; the "
               "daemon may still carry it out";
    case Withdrawal::taken:
    case Withdrawal::answered:
        break;
    }
    return "the daemon had picked up the request and may still carry it out";
}

std::string request_text(const Request &request)
{
    return std::string(request.name) + " (request " + std::to_string(request.code.code) + ")";
}

[[noreturn]] void fail_local(const Request &request, const std::string &within)
{
    throw Failure(Exit::no_answer, std::string(request.name) + " did not finish" + within,
                  "Check the configuration store, or wait longer with --timeout SECONDS.");
}

[[noreturn]] void fail_answer_lost(const Request &request, const std::string &within)
{
    throw Failure(Exit::no_answer,
                  std::string(daemon_name(request.channel())) + " has answered " +
                      request_text(request) + ", but the call did not end" + within +
                      "; its result is not known",
                  "The daemon has carried the request out or refused it: look at the state before "
                  "you try again.",
                  {{"withdrawn", false}, {"sent", true}});
}

[[noreturn]] void fail_profile_busy(const std::string &within)
{
    throw Failure(Exit::profile_busy, "a profile change is in progress and did not end" + within,
                  "Try again when it has ended. It is marked by " CMIF_PROFILE_BUSY_FILE
                  ", which 'cmifctl doctor --fix' removes if no process works on it.");
}

// What keeps a daemon from answering, as far as its queues and its marker show.
struct Obstacle {
    std::string text;
    const char *hint = check_daemon;
};

Obstacle obstacle_of(Channel channel)
{
    const Filling replies = filling_of(channel, reply_key(channel));
    if (replies.full)
        return {"; its reply queue is full of " + std::to_string(replies.records) +
                    " replies that no caller takes, so that no answer fits",
                "'cmifctl doctor --fix' removes them."};
    if (filling_of(channel, request_key(channel)).full)
        return {"; its request queue is full"};
    struct stat marker {
    };
    if (channel == Channel::qmi && stat(CMIF_QMI_READY_FILE, &marker) == 0 &&
        !S_ISREG(marker.st_mode))
        return {"; its readiness marker " CMIF_QMI_READY_FILE " is not a regular file",
                "Remove it and restart the daemon: rm -r " CMIF_QMI_READY_FILE};
    return {};
}

} // namespace

void fail_timed_out(const Request &request, const SentRecord &sent, Unanswered *unanswered,
                    double seconds)
{
    const std::string within = " within " + seconds_text(seconds);
    if (unanswered == nullptr)
        fail_local(request, within);
    const Withdrawal withdrawal = withdraw(request.code, sent, *unanswered);
    if (withdrawal == Withdrawal::answered)
        fail_answer_lost(request, within);
    const bool busy = access(CMIF_PROFILE_BUSY_FILE, F_OK) == 0;
    if (withdrawal == Withdrawal::nothing_sent && request.channel() == Channel::qmi && busy)
        fail_profile_busy(within);
    const Obstacle obstacle = obstacle_of(request.channel());
    throw Failure(Exit::no_answer,
                  std::string(daemon_name(request.channel())) + " did not answer " +
                      request_text(request) + within + "; " + describe(withdrawal) + obstacle.text,
                  obstacle.hint,
                  {{"withdrawn", withdrawal == Withdrawal::withdrawn},
                   {"sent", withdrawal != Withdrawal::nothing_sent}});
}

void fail_earlier_unanswered(const Request &request, double age, double seconds)
{
    throw Failure(
        Exit::no_answer,
        std::string(daemon_name(request.channel())) + " has not answered an earlier " +
            request_text(request) + ", sent " + seconds_text(std::round(age)) +
            " ago; nothing was sent within " + seconds_text(seconds),
        "Its late reply would pass for the answer to this request. It is given up when the daemon "
        "restarts, after 10 minutes, or by 'cmifctl doctor --fix'.",
        {{"withdrawn", false}, {"sent", false}});
}

} // namespace client
