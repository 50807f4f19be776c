// Carries the steps of a scenario out, by a clock and by events.
#ifndef SCENARIO_TIMELINE_H
#define SCENARIO_TIMELINE_H

#include "clock.h"
#include "script.h"

namespace scenario
{

class Timeline
{
public:
    // Called for a step whose action failed; any thread. The scenario goes on.
    using Failed = std::function<void(const Step &step, const std::string &why)>;

    Timeline(Clock &clock, Script script, Failed failed);

    // Carries out the steps without a moment; the times of the others count from now on.
    void start();

    // Carries out the steps that wait for this event, in the calling thread. An event before the
    // start is none.
    void event(std::string_view name);

    // The steps that are still to come, as they are written, in the order of the file.
    std::vector<std::string> pending() const;

private:
    struct Entry {
        Step step;
        std::optional<Time> due; // of `at` and `every`
        bool pending = true;
    };

    void carry_out(const Entry &entry);
    Entry *next();
    void pass_time();
    void set_alarm(); // for the holder of the lock
    Duration interval(const Step &step) const;

    Clock &clock_;
    Failed failed_;
    mutable std::mutex mutex_; // of the entries
    std::vector<Entry> entries_;
    bool started_ = false;
    Alarm alarm_; // goes first
};

} // namespace scenario

#endif
