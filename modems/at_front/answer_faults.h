// Faults of answers on AT ports: lost, late, or a refusal instead.
#ifndef MODEMS_AT_FRONT_ANSWER_FAULTS_H
#define MODEMS_AT_FRONT_ANSWER_FAULTS_H

#include "scenario/command.h"
#include "scenario/time_scale.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace at_front
{

struct AnswerFault {
    enum class Kind { lose, delay, refuse };

    Kind kind;
    std::string command{}; // the beginning of the line after "AT", "" for any
    std::chrono::milliseconds delay{};
    int error = 0; // of +CME ERROR
};

// Each happens once, in the order in which they were armed. For several threads.
class AnswerFaults
{
public:
    void arm(AnswerFault fault);

    // The first one that is meant for this line, which is then over.
    std::optional<AnswerFault> take(const std::string &line);

private:
    std::mutex mutex_;
    std::vector<AnswerFault> armed_;
};

// "answer lose | delay DURATION | refuse N", and the command that is meant.
scenario::Command answer_command(AnswerFaults &answer_faults);

} // namespace at_front

#endif
