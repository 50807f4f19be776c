#include "command.h"

#include <algorithm>
#include <string>

namespace scenario
{
namespace
{

std::string usage_of(const Command &command)
{
    std::string usage = "the command is: " + std::string(command.name);
    return command.arguments.empty() ? usage : usage.append(" ").append(command.arguments);
}

} // namespace

std::string rule_of(const Commands &commands)
{
    std::vector<std::string_view> names(commands.size());
    std::transform(commands.begin(), commands.end(), names.begin(),
                   [](const Command &command) { return command.name; });
    return one_of(names);
}

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
        throw ScriptError(name.column,
                          "unknown command " + quoted(name.text) + "; it is " + rule_of(commands));
    Action action = command->parse(words);
    words.expect_end(usage_of(*command));
    return action;
}

} // namespace scenario
