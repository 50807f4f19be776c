#include "fault_commands.h"

#include "scenario/events.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace cmif_sim
{
namespace
{

using namespace scenario;
using Channels = std::vector<Channel *>;

Channels channels_of(std::string_view side, const FaultTargets &targets)
{
    Channels channels;
    if (side != "qmi")
        channels.push_back(targets.at);
    if (side != "at")
        channels.push_back(targets.qmi);
    std::erase(channels, nullptr);
    return channels;
}

bool is_number(const Word *word)
{
    return word && word->text.find_first_not_of("0123456789") == std::string::npos;
}

const FaultKind &take_kind(Words &words)
{
    for (const FaultKind &kind : fault_kinds())
        words.offer(kind.name, kind.summary);
    const Word word = words.take("a kind of fault");
    if (const FaultKind *kind = find_fault_kind(word.text))
        return *kind;
    std::string names;
    for (const FaultKind &kind : fault_kinds())
        names.append(names.empty() ? "" : ", ").append(kind.name);
    words.fail("a kind of fault is one of: " + names);
}

int take_value(const FaultKind &kind, Words &words)
{
    const std::string what = "the value of " + std::string(kind.name);
    switch (kind.value) {
    case FaultValue::duration:
        return static_cast<int>(words.take_duration(what).count());
    case FaultValue::number:
        return words.take_number(what, kind.min, kind.max);
    case FaultValue::optional_number:
        return is_number(words.peek()) ? words.take_number(what, kind.min, kind.max) : kind.usual;
    case FaultValue::queue:
        return words.take_one_of(what, {"request", "reply"}) == "reply";
    case FaultValue::none:
        break;
    }
    return 0;
}

// What waits for a request acts on the next one unless told otherwise.
void take_when(Fault &fault, Words &words)
{
    constexpr int max_times = 1'000'000;
    const bool waits = fault.kind->stage == FaultStage::reply || fault.code ||
                       words.next_is("next") || words.next_is("always");
    fault.times = fault.kind->stage != FaultStage::once && waits ? 1 : 0;
    if (fault.kind->stage == FaultStage::once)
        return;
    if (words.take_if("always"))
        fault.times.reset();
    else if (words.take_if("next"))
        fault.times =
            is_number(words.peek()) ? words.take_number("the number of times", 1, max_times) : 1;
}

// Of what the kind's row does not say.
void check(const Fault &fault, const std::string &side, std::size_t column)
{
    const std::string_view name = fault.kind->name;
    if (name == "stale" && !fault.code)
        throw ScriptError(column, "stale needs a request code before it: fault at 12 stale");
    if (name != "stale" && fault.code && fault.kind->stage == FaultStage::once)
        throw ScriptError(column, std::string(name) + " takes no request code before it");
    if (name.ends_with("ready") && side != "qmi")
        throw ScriptError(column, "only the QMI daemon has a readiness marker: fault qmi " +
                                      std::string(name));
}

Fault take_fault(Words &words, const std::string &side)
{
    Fault fault;
    if (is_number(words.peek()))
        fault.code = words.take_number("the request code", 1, std::numeric_limits<int>::max());
    const std::size_t column = words.at_end() ? 0 : words.peek()->column;
    fault.kind = &take_kind(words);
    check(fault, side, column);
    fault.number = take_value(*fault.kind, words);
    if (words.take_if("after"))
        fault.after = take_event(words);
    take_when(fault, words);
    return fault;
}

Action parse(Words &words, const FaultTargets &targets)
{
    const std::string side = words.take_one_of("the daemon", {"at", "qmi", "all", "clear"});
    const Channels channels = channels_of(side == "clear" ? "all" : side, targets);
    if (side == "clear")
        return [channels] {
            for (Channel *channel : channels)
                channel->clear_faults();
        };
    if (channels.empty())
        words.fail("the daemon must be one that this router runs");
    const Fault fault = take_fault(words, side);
    return [channels, fault] {
        for (Channel *channel : channels)
            channel->add(fault);
    };
}

} // namespace

Command fault_command(const FaultTargets &targets)
{
    return {"fault", "at|qmi|all [CODE] KIND [VALUE] [after EVENT] [next [N] | always], or clear",
            "make a daemon do something wrong, or disarm all faults",
            [targets](Words &words) { return parse(words, targets); }};
}

} // namespace cmif_sim
