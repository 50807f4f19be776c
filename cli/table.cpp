#include "table.h"

#include <algorithm>

namespace cli
{
namespace
{

std::string summary_of(const Program &program, const std::string &path)
{
    if (const Command *command = find_command(program, path))
        return command->summary;
    for (const Group &group : program.groups)
        if (path == group.name)
            return group.summary;
    return "";
}

} // namespace

bool takes_secrets(const Command &command)
{
    return std::any_of(command.arguments.begin(), command.arguments.end(),
                       [](const Argument &argument) { return argument.traits.secret; });
}

const Command *find_command(const Program &program, std::string_view path)
{
    const auto found =
        std::find_if(program.commands.begin(), program.commands.end(),
                     [path](const Command &command) { return path == command.path; });
    return found == program.commands.end() ? nullptr : &*found;
}

std::vector<Candidate> subcommands_of(const Program &program, std::string_view path)
{
    const std::string start = path.empty() ? "" : std::string(path) + " ";
    std::vector<Candidate> words;
    for (const Command &command : program.commands) {
        const std::string_view whole = command.path;
        if (whole.empty() || !whole.starts_with(start))
            continue;
        std::string word(whole.substr(start.size()));
        word.erase(std::min(word.find(' '), word.size()));
        if (words.empty() || words.back().value != word)
            words.push_back({word, summary_of(program, start + word)});
    }
    return words;
}

} // namespace cli
