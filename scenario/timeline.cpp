#include "timeline.h"

#include <algorithm>

namespace scenario
{
namespace
{

using namespace std::chrono_literals;
using Moment = Step::Moment;

// However fast the simulation is, the rest of the program gets its turn between two repetitions.
constexpr auto min_interval = 10ms;

} // namespace

Timeline::Timeline(Clock &clock, Script script, Failed failed)
    : clock_(clock), failed_(std::move(failed)), alarm_(clock, [this] { pass_time(); })
{
    for (Step &step : script)
        entries_.push_back({std::move(step), std::nullopt});
}

void Timeline::start()
{
    {
        const std::lock_guard lock(mutex_);
        const Time now = clock_.now();
        for (Entry &entry : entries_)
            if (entry.step.moment != Moment::when)
                entry.due = now + clock_.scale().scaled(entry.step.time);
        started_ = true;
    }
    pass_time();
}

Duration Timeline::interval(const Step &step) const
{
    return std::max<Duration>(clock_.scale().scaled(step.time), min_interval);
}

// A failed step doesn't end the scenario: the modem may have been elsewhere than expected.
void Timeline::carry_out(const Entry &entry)
{
    try {
        entry.step.action();
    } catch (const std::exception &error) {
        failed_(entry.step, error.what());
    }
}

// The earliest, and of several the first in the file.
Timeline::Entry *Timeline::next()
{
    Entry *found = nullptr;
    for (Entry &entry : entries_)
        if (entry.pending && entry.due && (!found || *entry.due < *found->due))
            found = &entry;
    return found;
}

void Timeline::set_alarm()
{
    const Entry *const entry = next();
    alarm_.set(entry ? entry->due : std::nullopt);
}

// Without the lock during an action: it may lead to an event.
void Timeline::pass_time()
{
    std::unique_lock lock(mutex_);
    const Time now = clock_.now();
    for (Entry *entry = next(); entry && *entry->due <= now; entry = next()) {
        if (entry->step.moment == Moment::every)
            entry->due = *entry->due + interval(entry->step);
        else
            entry->pending = false;
        lock.unlock();
        carry_out(*entry);
        lock.lock();
    }
    set_alarm();
}

void Timeline::event(std::string_view name)
{
    std::unique_lock lock(mutex_);
    for (Entry &entry : entries_) {
        if (!started_ || !entry.pending || entry.step.event != name)
            continue;
        entry.pending = false;
        lock.unlock();
        carry_out(entry);
        lock.lock();
    }
}

std::vector<std::string> Timeline::pending() const
{
    const std::lock_guard lock(mutex_);
    std::vector<std::string> steps;
    for (const Entry &entry : entries_)
        if (entry.pending)
            steps.push_back(entry.step.text);
    return steps;
}

} // namespace scenario
