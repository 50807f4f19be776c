// A scenario: commands, each with the moment when it is carried out. One line is one of
//
//     COMMAND                 at the start
//     at DURATION COMMAND     so long after the start
//     every DURATION COMMAND  again and again
//     when EVENT COMMAND      the first time that this happens
#ifndef SCENARIO_SCRIPT_H
#define SCENARIO_SCRIPT_H

#include "command.h"

#include <chrono>

namespace scenario
{

struct Step {
    enum class Moment { start, at, every, when };

    std::size_t line = 0;
    std::string text; // of the line, without its comment
    Moment moment = Moment::start;
    std::chrono::milliseconds time{}; // of `at` and `every`
    std::string event;                // of `when`
    Action action;
};

using Script = std::vector<Step>;

// Everything that is wrong in a script, one line each: "FILE:LINE:COLUMN: what, and what is
// allowed".
class BadScript : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

// Parses all of it, then fails with a BadScript if a line was wrong. `name` is for the messages.
Script parse_script(std::string_view text, const std::string &name, const Commands &commands);

// The text of a file. Fails with a BadScript when it can't be read, or is larger than 1 MiB.
std::string read_script_file(const std::string &path);

// Both of them.
Script read_script(const std::string &path, const Commands &commands);

} // namespace scenario

#endif
