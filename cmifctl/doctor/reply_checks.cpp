#include "checks.h"
#include "client/call.h"
#include "client/process.h"
#include "client/queues.h"
#include "client/unanswered.h"

namespace cmifctl
{
namespace
{

using client::RequestCode;

constexpr double lock_timeout = 1; // seconds

std::vector<QueuedRecord> replies_of(const ChannelSnapshot &snapshot, bool known)
{
    return some_of(snapshot.replies.records, [&](const QueuedRecord &record) {
        return is_known(snapshot.channel, record.code) == known;
    });
}

Problems left_replies(const Snapshot &snapshot, bool known, const std::string &what)
{
    Problems problems;
    for (const ChannelSnapshot &channel : snapshot.channels)
        if (const auto replies = replies_of(channel, known); !replies.empty())
            problems.push_back(channel.replies.name + " holds " + listed(replies, what) +
                               ", which no caller takes");
    return problems;
}

// A code that is in use for longer than this is left as it is.
void with_lock(RequestCode code, const std::function<void()> &work)
{
    try {
        const client::CodeLock lock = client::lock_codes({.timeout = lock_timeout}, {code});
        work();
    } catch (const Failure &) { // the next snapshot shows what is left
    }
}

void take_replies(const Snapshot &snapshot, bool known)
{
    for (const ChannelSnapshot &channel : snapshot.channels)
        for (const long number : codes_of(replies_of(channel, known))) {
            const RequestCode code{channel.channel, number};
            with_lock(code,
                      [code] { client::Unanswered().remove(code, client::clear_replies(code)); });
        }
}

std::vector<RequestCode> all_codes()
{
    std::vector<RequestCode> codes;
    for (const Channel channel : {Channel::at, Channel::qmi})
        for (long code = 1; client::slot_of({channel, code}); ++code)
            if (is_known(channel, code))
                codes.push_back({channel, code});
    return codes;
}

// Requests whose callers have given up.
std::vector<RequestCode> given_up()
try {
    const client::Unanswered table;
    std::vector<RequestCode> codes;
    for (const RequestCode &code : all_codes())
        if (table.is_awaited(code) && !client::lock_process(code))
            codes.push_back(code);
    return codes;
} catch (const Failure &) {
    return {};
}

} // namespace

Problems checks::stale_replies(const Snapshot &snapshot)
{
    return left_replies(snapshot, true, "stale reply");
}

void checks::take_stale_replies(const Snapshot &snapshot)
{
    take_replies(snapshot, true);
}

Problems checks::foreign_replies(const Snapshot &snapshot)
{
    return left_replies(snapshot, false, "foreign reply");
}

void checks::take_foreign_replies(const Snapshot &snapshot)
{
    take_replies(snapshot, false);
}

Problems checks::unanswered_requests(const Snapshot &)
{
    Problems problems;
    for (const RequestCode &code : given_up())
        problems.push_back(client::daemon_name(code.channel) +
                           (" has not answered request " + std::to_string(code.code)) +
                           ", whose caller has given up; calls of this code wait for its reply");
    return problems;
}

void checks::forget_unanswered(const Snapshot &)
{
    for (const RequestCode &code : given_up())
        with_lock(code, [code] {
            client::Unanswered table;
            table.remove(code, table.count(code));
        });
}

Problems checks::frozen_callers(const Snapshot &)
{
    Problems problems;
    for (const RequestCode &code : all_codes())
        if (const auto process = client::lock_process(code);
            process && client::process_is_stopped(*process))
            problems.emplace_back("request " + std::to_string(code.code) + " of " +
                                      client::daemon_name(code.channel) + " is kept by " +
                                      client::process_name(*process) + ", which is stopped",
                                  std::to_string(*process));
    return problems;
}

Problems checks::unusable_locks(const Snapshot &)
{
    constexpr RequestCode unused{Channel::at, 31}; // so its lock is free
    try {
        const client::Unanswered table;
        const client::CodeLock lock({unused}, lock_timeout, [] {});
        return {};
    } catch (const Failure &failure) {
        return {failure.what()};
    }
}

} // namespace cmifctl
