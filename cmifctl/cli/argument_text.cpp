#include "argument_text.h"

namespace cmifctl
{

std::string usage_of(const Argument &argument)
{
    std::string value = argument.value;
    const std::string letter =
        argument.letter != '\0' ? std::string("-") + argument.letter + ", " : "";
    switch (argument.kind) {
    case Argument::Kind::required:
        return value;
    case Argument::Kind::optional:
        return "[" + value + "]";
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
    return argument.help + (several ? ": " + choices(argument.choices, ", ") : "");
}

std::string synopsis_of(const Command &command)
{
    std::string text = std::string("cmifctl [OPTIONS] ") + command.path;
    for (const Argument &argument : command.arguments) {
        const std::string usage = usage_of(argument);
        text += argument.positional() ? " " + usage : " [" + usage + "]";
    }
    return text;
}

} // namespace cmifctl
