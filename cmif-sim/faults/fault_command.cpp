#include "fault_command.h"

#include "daemons/at_forms.h"
#include "daemons/qmi_requests.h"
#include "scenario/events.h"

#include <algorithm>
#include <vector>

namespace cmif_sim
{
namespace
{

using namespace scenario;
using FaultyLinks = std::vector<FaultyLink *>;

FaultyLinks links_of(std::string_view daemon, const FaultTargets &targets)
{
    FaultyLinks links;
    if (daemon != "qmi")
        links.push_back(targets.at);
    if (daemon != "at")
        links.push_back(targets.qmi);
    std::erase(links, nullptr);
    return links;
}

bool is_number(const Word *word)
{
    return word && word->text.find_first_not_of("0123456789") == std::string::npos;
}

bool is_request(int code, const std::string &daemon)
{
    return (daemon != "qmi" && daemons::find_at_form(code)) ||
           (daemon != "at" && daemons::find_qmi_request(code));
}

int take_code(const std::string &daemon, Words &words)
{
    constexpr int max_code = 255;
    std::vector<std::string> codes;
    for (int code = 1; code <= max_code; ++code)
        if (is_request(code, daemon))
            codes.push_back(std::to_string(code));
    const std::string what = "the request code";
    const int code = words.take_number(what, 1, max_code);
    if (!is_request(code, daemon))
        words.refuse(what, one_of(codes));
    return code;
}

// Why this kind can't follow what was read, or "".
std::string objection(const FaultKind &kind, bool has_code, const std::string &daemon)
{
    if (kind.name == "stale" && !has_code)
        return "stale needs a request code before it: fault at 12 stale";
    if (kind.name != "stale" && has_code && kind.stage == FaultStage::once)
        return std::string(kind.name) + " takes no request code before it";
    if (kind.name.ends_with("ready") && daemon != "qmi")
        return "only the QMI daemon has a readiness marker: fault qmi " + std::string(kind.name);
    return "";
}

const FaultKind &take_kind(Words &words, bool has_code, const std::string &daemon)
{
    std::vector<std::string_view> names;
    for (const FaultKind &kind : fault_kinds())
        if (objection(kind, has_code, daemon).empty()) {
            words.offer(kind.name, kind.summary);
            names.push_back(kind.name);
        }
    const Word word = words.take("a kind of fault", one_of(names));
    const FaultKind *const kind = find_fault_kind(word.text);
    if (!kind)
        words.refuse("a kind of fault", one_of(names));
    if (const std::string why = objection(*kind, has_code, daemon); !why.empty())
        throw ScriptError(word.column, why);
    return *kind;
}

// A reply of the AT daemon is shorter than one of the QMI daemon.
int max_value(const FaultKind &kind, const std::string &daemon)
{
    return kind.name == "short" && daemon != "qmi" ? CMIF_AT_PAYLOAD : kind.max;
}

int take_value(const FaultKind &kind, Words &words, int max)
{
    const std::string what = "the value of " + std::string(kind.name);
    switch (kind.value) {
    case FaultValue::duration:
        return static_cast<int>(words.take_duration(what).count());
    case FaultValue::number:
        return words.take_number(what, kind.min, max);
    case FaultValue::optional_number:
        return is_number(words.peek()) ? words.take_number(what, kind.min, max) : kind.usual;
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
    const bool waits = fault.kind->stage == FaultStage::reply || fault.kind->name == "ignore" ||
                       fault.code || words.next_is("next") || words.next_is("always");
    fault.times = fault.kind->stage != FaultStage::once && waits ? 1 : 0;
    if (fault.kind->stage == FaultStage::once)
        return;
    if (words.take_if("always"))
        fault.times.reset();
    else if (words.take_if("next"))
        fault.times =
            is_number(words.peek()) ? words.take_number("the number of times", 1, max_times) : 1;
}

Fault take_fault(Words &words, const std::string &daemon)
{
    Fault fault;
    if (is_number(words.peek()))
        fault.code = take_code(daemon, words);
    fault.kind = &take_kind(words, fault.code.has_value(), daemon);
    fault.number = take_value(*fault.kind, words, max_value(*fault.kind, daemon));
    if (words.take_if("after"))
        fault.after = take_event(words);
    take_when(fault, words);
    return fault;
}

Action parse(Words &words, const FaultTargets &targets)
{
    const std::string daemon = words.take_one_of("the daemon", {"at", "qmi", "all", "clear"});
    const FaultyLinks links = links_of(daemon == "clear" ? "all" : daemon, targets);
    if (daemon == "clear")
        return [links] {
            for (FaultyLink *link : links)
                link->clear_faults();
        };
    if (links.empty())
        words.fail("the daemon must be one that this router runs");
    const Fault fault = take_fault(words, daemon);
    return [links, fault] {
        for (FaultyLink *link : links)
            link->add(fault);
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
