// The course of a recording: which reply answers a request, and when what is set.
#ifndef CMIF_SIM_REPLAY_REPLAY_H
#define CMIF_SIM_REPLAY_REPLAY_H

#include "cmif-record/reader.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>

namespace cmif_sim
{

// Time runs as recorded, times `pace`, up to the next request, and there it waits for the caller. A
// request gets the next recorded reply for its channel, code and fields, after the recorded delay,
// and what was set before that reply is set before it. Fields that were replaced match any text.
class Replay
{
public:
    using Event = cmif_record::Event;
    using Time = std::chrono::steady_clock::time_point;

    // `carry_out` gets replies to send, settings and files, each when it is due.
    Replay(const cmif_record::RecordingContents &contents, double pace,
           std::function<void(const Event &)> carry_out);

    // Carries out what the daemon did while it started: the first tenth of a second.
    void start(Time now);

    // False when nothing, or nothing more, of this request was recorded.
    bool take(const Event &request, Time now);

    // Carries out what is due.
    void advance(Time now);

private:
    struct Step {
        const Event *event;
        std::optional<std::size_t> reply{}; // of a request: the step that answers it
        bool done = false;                  // a reply belongs to a request, or a request was taken
    };

    void find_replies();
    bool matches(const Event &recorded, const Event &request) const;
    std::optional<std::size_t> find(const Event &request) const;
    std::optional<std::size_t> next_due(Time now);
    void carry_out_before(std::size_t end, Time time);
    Time due(const Event &event, Time since, long long since_recorded) const;

    bool secrets_replaced_;
    double pace_;
    std::function<void(const Event &)> carry_out_;
    std::vector<Step> steps_;
    std::size_t next_ = 0;
    Time since_{}; // when the course was at since_recorded_
    long long since_recorded_ = 0;
    std::multimap<Time, std::size_t> replies_; // under way
};

} // namespace cmif_sim

#endif
