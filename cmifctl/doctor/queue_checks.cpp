#include "checks.h"
#include "client/call.h"
#include "client/code_lock.h"
#include "client/process.h"
#include "client/queues.h"
#include "client/unanswered.h"

#include <algorithm>
#include <array>
#include <functional>

namespace cmifctl
{
namespace
{

using client::RequestCode;
using Access = QueueLook::Access;

constexpr double lock_timeout = 1; // seconds

Texts of_queues(const Look &look, const std::function<std::string(const QueueLook &)> &text_of)
{
    Texts texts;
    for (const ChannelLook &channel : look.channels)
        for (const QueueLook *queue : {&channel.requests, &channel.replies})
            if (std::string text = text_of(*queue); !text.empty())
                texts.push_back(queue->name + " " + text);
    return texts;
}

std::size_t payload_of(Channel channel)
{
    return channel == Channel::at ? CMIF_AT_PAYLOAD : CMIF_QMI_PAYLOAD;
}

// "3 requests, of codes 4, 12"; `what` is one of them.
std::string listed(const std::vector<LyingRecord> &records, const std::string &what)
{
    const std::string several =
        what.ends_with('y') ? what.substr(0, what.size() - 1) + "ies" : what + "s";
    std::string text =
        std::to_string(records.size()) + " " + (records.size() == 1 ? what : several) + ", of code";
    const std::vector<long> codes = codes_of(records);
    text += codes.size() == 1 ? "" : "s";
    for (const long code : codes)
        text += (code == codes.front() ? " " : ", ") + std::to_string(code);
    return text;
}

std::vector<LyingRecord> some_of(const std::vector<LyingRecord> &records,
                                 const std::function<bool(const LyingRecord &)> &wanted)
{
    std::vector<LyingRecord> some;
    std::copy_if(records.begin(), records.end(), std::back_inserter(some), wanted);
    return some;
}

std::vector<LyingRecord> replies_of(const ChannelLook &look, bool known)
{
    return some_of(look.replies.records, [&](const LyingRecord &record) {
        return is_known(look.channel, record.code) == known;
    });
}

Texts lying_replies(const Look &look, bool known, const std::string &what)
{
    Texts texts;
    for (const ChannelLook &channel : look.channels)
        if (const auto replies = replies_of(channel, known); !replies.empty())
            texts.push_back(channel.replies.name + " holds " + listed(replies, what) +
                            ", which no caller takes");
    return texts;
}

// A code that is in use for longer than this is left as it is.
void with_lock(RequestCode code, const std::function<void()> &work)
{
    try {
        const client::CodeLock lock = client::lock_codes({.timeout = lock_timeout}, {code});
        work();
    } catch (const Failure &) { // the next look shows what is left
    }
}

void take_replies(const Look &look, bool known)
{
    for (const ChannelLook &channel : look.channels)
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
        for (long code = 1; is_known(channel, code); ++code)
            codes.push_back({channel, code});
    return codes;
}

// Requests whose callers have given up.
std::vector<RequestCode> given_up()
try {
    const client::Unanswered table;
    std::vector<RequestCode> codes;
    for (const RequestCode &code : all_codes())
        if (table.count(code) > 0 && !client::lock_process(code))
            codes.push_back(code);
    return codes;
} catch (const Failure &) {
    return {};
}

} // namespace

Texts checks::missing_queues(const Look &look)
{
    return of_queues(look, [](const QueueLook &queue) {
        return queue.access == Access::missing ? "does not exist" : "";
    });
}

Texts checks::queue_permissions(const Look &look)
{
    constexpr unsigned everybody = 0666;
    return of_queues(look, [](const QueueLook &queue) -> std::string {
        if (queue.access == Access::forbidden)
            return "may not be used by this user";
        if (queue.access == Access::missing || (queue.mode & everybody) == everybody)
            return "";
        std::array<char, 16> mode{};
        std::snprintf(mode.data(), mode.size(), "%04o", queue.mode);
        return std::string("may not be used by every user (mode ") + mode.data() + ")";
    });
}

Texts checks::full_queues(const Look &look)
{
    Texts texts;
    for (const ChannelLook &channel : look.channels) {
        if (channel.requests.full)
            texts.push_back(channel.requests.name + " is full: no request fits");
        if (channel.replies.full)
            texts.push_back(channel.replies.name + " is full of replies that no caller takes: " +
                            channel.daemon + " can't answer");
    }
    return texts;
}

Texts checks::waiting_requests(const Look &look)
{
    Texts texts;
    for (const ChannelLook &channel : look.channels)
        if (channel.state != DaemonState::answers && !channel.requests.records.empty())
            texts.push_back(channel.requests.name + " holds " +
                            listed(channel.requests.records, "request"));
    return texts;
}

Texts checks::foreign_requests(const Look &look)
{
    Texts texts;
    for (const ChannelLook &channel : look.channels) {
        const auto foreign = some_of(channel.requests.records, [&](const LyingRecord &record) {
            return !is_known(channel.channel, record.code) ||
                   record.size > payload_of(channel.channel);
        });
        if (!foreign.empty())
            texts.push_back(channel.requests.name + " holds " + listed(foreign, "record") +
                            ", which " + channel.daemon + " does not understand");
    }
    return texts;
}

Texts checks::stale_replies(const Look &look)
{
    return lying_replies(look, true, "stale reply");
}

void checks::take_stale_replies(const Look &look)
{
    take_replies(look, true);
}

Texts checks::foreign_replies(const Look &look)
{
    return lying_replies(look, false, "foreign reply");
}

void checks::take_foreign_replies(const Look &look)
{
    take_replies(look, false);
}

Texts checks::unanswered_requests(const Look &look)
{
    Texts texts;
    for (const RequestCode &code : given_up()) {
        const ChannelLook &channel = code.channel == Channel::at ? look.at() : look.qmi();
        texts.push_back(channel.daemon + " has not answered request " + std::to_string(code.code) +
                        ", whose caller has given up; calls of this code wait for its reply");
    }
    return texts;
}

void checks::forget_unanswered(const Look &)
{
    for (const RequestCode &code : given_up())
        with_lock(code, [code] {
            client::Unanswered table;
            table.remove(code, table.count(code));
        });
}

Texts checks::frozen_callers(const Look &)
{
    Texts texts;
    for (const RequestCode &code : all_codes())
        if (const auto process = client::lock_process(code);
            process && client::process_is_stopped(*process))
            texts.push_back("request " + std::to_string(code.code) + " of " +
                            client::daemon_name(code.channel) + " is kept by " +
                            client::process_name(*process) + ", which is stopped");
    return texts;
}

Texts checks::unusable_locks(const Look &)
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
