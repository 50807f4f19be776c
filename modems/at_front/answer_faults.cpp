#include "answer_faults.h"

#include <algorithm>
#include <cctype>

namespace at_front
{
namespace
{

using scenario::Words;

std::string upper(std::string text)
{
    for (char &c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

AnswerFault take_answer_fault(Words &words)
{
    constexpr int max_error = 999;
    const auto kind = words.take_one_of("what happens to an answer", {"lose", "delay", "refuse"});
    AnswerFault fault{AnswerFault::Kind::lose};
    if (kind == "delay") {
        fault.kind = AnswerFault::Kind::delay;
        fault.delay = words.take_duration("the delay");
    } else if (kind == "refuse") {
        fault.kind = AnswerFault::Kind::refuse;
        fault.error = words.take_number("the number of +CME ERROR", 0, max_error);
    }
    if (!words.at_end())
        fault.command = upper(words.take("the command").text);
    return fault;
}

} // namespace

void AnswerFaults::arm(AnswerFault fault)
{
    const std::lock_guard lock(mutex_);
    armed_.push_back(std::move(fault));
}

std::optional<AnswerFault> AnswerFaults::take(const std::string &line)
{
    const std::string commands = upper(line).substr(std::min<std::size_t>(2, line.size()));
    const std::lock_guard lock(mutex_);
    const auto found = std::find_if(armed_.begin(), armed_.end(), [&](const AnswerFault &each) {
        return commands.starts_with(each.command);
    });
    if (found == armed_.end())
        return std::nullopt;
    AnswerFault fault = std::move(*found);
    armed_.erase(found);
    return fault;
}

scenario::Command answer_command(AnswerFaults &answer_faults)
{
    return {"answer", "lose | delay DURATION | refuse N, then [COMMAND]",
            "have the modem lose, delay or refuse its next answer on an AT port",
            [&answer_faults](Words &words) -> scenario::Action {
                return [&answer_faults, fault = take_answer_fault(words)] {
                    answer_faults.arm(fault);
                };
            }};
}

} // namespace at_front
