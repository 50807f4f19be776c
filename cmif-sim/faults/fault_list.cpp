#include "fault_list.h"

#include <algorithm>

namespace cmif_sim
{
namespace
{

std::string value_text(const Fault &fault)
{
    switch (fault.kind->value) {
    case FaultValue::duration:
        return " " + std::to_string(fault.number) + "ms";
    case FaultValue::number:
    case FaultValue::optional_number:
        return " " + std::to_string(fault.number);
    case FaultValue::queue:
        return fault.number == 0 ? " request" : " reply";
    case FaultValue::none:
        break;
    }
    return "";
}

std::string times_text(const Fault &fault)
{
    if (!fault.times)
        return " always";
    return *fault.times == 0 ? "" : " next " + std::to_string(*fault.times);
}

bool matches(const Fault &fault, FaultStage stage, long code)
{
    return fault.after.empty() && fault.kind->stage == stage && fault.code.value_or(code) == code;
}

} // namespace

bool acts_at_once(const Fault &fault)
{
    return fault.times == 0;
}

std::string describe(const Fault &fault)
{
    std::string text = fault.code ? std::to_string(*fault.code) + " " : "";
    text.append(fault.kind->name).append(value_text(fault));
    if (!fault.after.empty())
        text += " after " + fault.after;
    return text + times_text(fault);
}

void FaultList::arm(const Fault &fault)
{
    const std::lock_guard lock(mutex_);
    armed_.push_back(fault);
}

void FaultList::clear()
{
    const std::lock_guard lock(mutex_);
    armed_.clear();
}

std::vector<std::string> FaultList::descriptions() const
{
    const std::lock_guard lock(mutex_);
    std::vector<std::string> texts(armed_.size());
    std::transform(armed_.begin(), armed_.end(), texts.begin(), describe);
    return texts;
}

std::vector<Fault> FaultList::take(FaultStage stage, long code)
{
    const std::lock_guard lock(mutex_);
    std::vector<Fault> taken;
    for (Fault &fault : armed_)
        if (matches(fault, stage, code)) {
            taken.push_back(fault);
            if (fault.times)
                --*fault.times;
        }
    std::erase_if(armed_,
                  [](const Fault &fault) { return fault.after.empty() && fault.times == 0; });
    return taken;
}

std::vector<Fault> FaultList::event(std::string_view name)
{
    const std::lock_guard lock(mutex_);
    std::vector<Fault> acting;
    for (Fault &fault : armed_)
        if (fault.after == name) {
            fault.after.clear();
            if (acts_at_once(fault))
                acting.push_back(fault);
        }
    std::erase_if(armed_,
                  [](const Fault &fault) { return fault.after.empty() && fault.times == 0; });
    return acting;
}

} // namespace cmif_sim
