#include "argument_text.h"

namespace cli
{

std::string usage_of(const Argument &argument)
{
    std::string value = argument.value;
    const std::string letter =
        argument.traits.letter != '\0' ? std::string("-") + argument.traits.letter + ", " : "";
    switch (argument.kind) {
    case Argument::Kind::required:
        return value;
    case Argument::Kind::optional:
        return "[" + value + "]";
    case Argument::Kind::rest:
        return "[-- " + value + "]";
    case Argument::Kind::option:
        return letter + "--" + argument.name + " " + value;
    case Argument::Kind::flag:
        break;
    }
    return letter + "--" + argument.name + (value.empty() ? "" : "[=" + value + "]");
}

std::string meaning_of(const Argument &argument)
{
    const bool several = argument.choices.size() > 1;
    return argument.help + (several ? ": " + list_of(argument.choices) : "");
}

std::string usage_of(const Command &command)
{
    std::string text = command.path;
    for (const Argument &argument : command.arguments) {
        const std::string usage = usage_of(argument);
        text += (text.empty() ? "" : " ") + (argument.by_name() ? "[" + usage + "]" : usage);
    }
    return text;
}

std::string example_of(const Program &program, const Command &command)
{
    std::string text = program.name;
    for (const std::string word : {command.path, command.example})
        text += (word.empty() ? "" : " ") + word;
    return text;
}

std::string synopsis_of(const Program &program, const std::string &path)
{
    const std::string start = std::string(program.name) + " [OPTIONS] ";
    if (const Command *command = find_command(program, path))
        return start + usage_of(*command);
    if (!path.empty())
        return start + path + " VERB [ARGS]";
    return start + (program.groups.empty() ? "COMMAND [ARGS]" : "GROUP VERB [ARGS]");
}

std::string sentence(const std::string &text)
{
    std::string out = text;
    if (!out.empty() && out.front() >= 'a' && out.front() <= 'z')
        out.front() = static_cast<char>(out.front() - 'a' + 'A');
    return out.ends_with('.') || out.empty() ? out : out + ".";
}

} // namespace cli
