// A command of the scenario language. Parsing and running are two steps, so that nothing of a file
// is carried out when one of its lines is wrong.
#ifndef SCENARIO_COMMAND_H
#define SCENARIO_COMMAND_H

#include "words.h"

#include <functional>
#include <string_view>
#include <vector>

namespace scenario
{

// Carries the command out; may fail with a std::exception, whose text is for people.
using Action = std::function<void()>;

struct Command {
    std::string_view name;                // its first word
    std::string_view arguments;           // as help shows them: "rsrp=DBM sinr=DB"
    std::string_view summary;             // one line
    std::function<Action(Words &)> parse; // of the words after the name; changes nothing yet
};

using Commands = std::vector<Command>;

// What a command may be: "one of: ...", for an error.
std::string rule_of(const Commands &commands);

// The action of a line; a do-nothing for one without words. Fails with a ScriptError.
Action parse_command(const Commands &commands, Words &words);

} // namespace scenario

#endif
