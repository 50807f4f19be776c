#include "command.h"

#include <algorithm>
#include <string>

namespace scenario
{
namespace
{

std::string names_of(const Commands &commands)
{
    std::string names;
    for (const Command &command : commands)
        names.append(names.empty() ? "" : ", ").append(command.name);
    return names;
}

} // namespace

Action parse_command(const Commands &commands, Words &words)
{
    for (const Command &command : commands)
        words.offer(command.name, command.summary);
    if (words.at_end())
        return [] {};
    const Word name = words.take("a command");
    const auto command =
        std::find_if(commands.begin(), commands.end(),
                     [&](const Command &candidate) { return candidate.name == name.text; });
    if (command == commands.end())
        words.fail("a command is one of: " + names_of(commands));
    Action action = command->parse(words);
    words.expect_end();
    return action;
}

} // namespace scenario
