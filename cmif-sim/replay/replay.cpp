#include "replay.h"

#include <algorithm>
#include <utility>

namespace cmif_sim
{

using cmif_record::Event;
using Type = Event::Type;

Replay::Replay(const cmif_record::RecordingContents &contents, double pace,
               std::function<void(const Event &)> carry_out)
    : secrets_replaced_(contents.secrets_replaced), pace_(pace), carry_out_(std::move(carry_out))
{
    for (const Event &event : contents.events)
        steps_.push_back({&event});
    find_replies();
}

// A reply answers the first request of its code that has none yet. One without such a request, a
// second reply for example, is a step of its own.
void Replay::find_replies()
{
    std::map<std::pair<cmif_record::Channel, long>, std::vector<std::size_t>> unanswered;
    for (std::size_t i = 0; i < steps_.size(); ++i) {
        const Event &event = *steps_[i].event;
        auto &waiting = unanswered[{event.channel, event.code}];
        if (event.type == Type::request)
            waiting.push_back(i);
        if (event.type != Type::reply || waiting.empty())
            continue;
        steps_[waiting.front()].reply = i;
        steps_[i].done = true;
        waiting.erase(waiting.begin());
    }
}

Replay::Time Replay::due(const Event &event, Time since, long long since_recorded) const
{
    using std::chrono::duration_cast;
    const std::chrono::duration<double, std::micro> delay(
        static_cast<double>(event.time - since_recorded) * pace_);
    return since + duration_cast<Time::duration>(delay);
}

bool Replay::matches(const Event &recorded, const Event &request) const
{
    if (recorded.channel != request.channel || recorded.code != request.code ||
        recorded.fields.size() != request.fields.size())
        return false;
    return std::all_of(recorded.fields.begin(), recorded.fields.end(), [&](const auto &field) {
        const auto &[name, value] = field;
        const auto asked = request.fields.find(name);
        const bool replaced =
            secrets_replaced_ &&
            (name == "payload" || is_secret_field(recorded.channel, recorded.code, name));
        return asked != request.fields.end() && (replaced || asked->second == value);
    });
}

std::optional<std::size_t> Replay::find(const Event &request) const
{
    for (std::size_t i = 0; i < steps_.size(); ++i)
        if (!steps_[i].done && steps_[i].event->type == Type::request &&
            matches(*steps_[i].event, request))
            return i;
    return std::nullopt;
}

// Of a request that is passed here, the caller may still come.
void Replay::carry_out_before(std::size_t end, Time time)
{
    if (end < next_)
        return;
    for (; next_ < end; ++next_)
        if (!steps_[next_].done && steps_[next_].event->type != Type::request)
            carry_out_(*steps_[next_].event);
    since_ = time;
    since_recorded_ = steps_[end].event->time;
}

void Replay::start(Time now)
{
    constexpr long long start_up = 100'000; // microseconds
    since_ = now;
    if (steps_.empty())
        return;
    since_recorded_ = steps_.front().event->time;
    for (; next_ < steps_.size() && steps_[next_].event->type != Type::request &&
           steps_[next_].event->time <= since_recorded_ + start_up;
         ++next_)
        if (!steps_[next_].done)
            carry_out_(*steps_[next_].event);
}

bool Replay::take(const Event &request, Time now)
{
    const std::optional<std::size_t> found = find(request);
    if (!found)
        return false;
    Step &step = steps_[*found];
    step.done = true;
    carry_out_before(*found, now);
    if (step.reply)
        replies_.emplace(due(*steps_[*step.reply].event, now, step.event->time), *step.reply);
    return true;
}

// The next step that is not a request, or nothing while it is not due or a request comes first.
std::optional<std::size_t> Replay::next_due(Time now)
{
    while (next_ < steps_.size() && steps_[next_].done)
        ++next_;
    if (next_ == steps_.size() || steps_[next_].event->type == Type::request ||
        due(*steps_[next_].event, since_, since_recorded_) > now)
        return std::nullopt;
    return next_;
}

void Replay::advance(Time now)
{
    for (auto reply = replies_.begin(); reply != replies_.end() && reply->first <= now;
         reply = replies_.begin()) {
        carry_out_before(reply->second, reply->first); // not now: a delay must not add up
        carry_out_(*steps_[reply->second].event);
        replies_.erase(reply);
    }
    while (const auto step = next_due(now)) {
        ++next_;
        carry_out_(*steps_[*step].event);
    }
}

} // namespace cmif_sim
