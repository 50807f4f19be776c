// How an argument looks in help and manual.
#ifndef CMIFCTL_CLI_ARGUMENT_TEXT_H
#define CMIFCTL_CLI_ARGUMENT_TEXT_H

#include "commands.h"

namespace cmifctl
{

// "--apn NAME", "MODE", "[-]"
inline std::string usage_of(const Argument &argument)
{
    std::string value = argument.value;
    switch (argument.kind) {
    case Argument::Kind::required:
        return value;
    case Argument::Kind::optional:
        return "[" + value + "]";
    case Argument::Kind::option:
        return std::string("--") + argument.name + " " + value;
    case Argument::Kind::flag:
        break;
    }
    return std::string("--") + argument.name;
}

// The help, and the choices when there are several.
inline std::string meaning_of(const Argument &argument)
{
    const std::string list =
        argument.choices.size() > 1 ? ": " + choices(argument.choices, ", ") : "";
    return argument.help + list;
}

// "cmifctl sim enter-pin [OPTIONS] [-]"
inline std::string synopsis_of(const Command &command)
{
    std::string text = std::string("cmifctl [OPTIONS] ") + command.path;
    for (const Argument &argument : command.arguments) {
        const bool bracket =
            argument.kind == Argument::Kind::option || argument.kind == Argument::Kind::flag;
        text += bracket ? " [" + usage_of(argument) + "]" : " " + usage_of(argument);
    }
    return text;
}

struct ExitMeaning {
    Exit status;
    const char *meaning;
};

constexpr ExitMeaning exit_meanings[]{
    {Exit::done, "done"},
    {Exit::other, "another failure, as the message says"},
    {Exit::usage, "the command line is wrong, or nobody could be asked"},
    {Exit::no_answer, "no answer in time"},
    {Exit::refused, "refused by the daemon, whose code and name are in the message"},
    {Exit::invalid, "an argument is invalid, a setting is missing, or a last try is kept back"},
    {Exit::no_file, "a file is missing"},
    {Exit::profile_busy, "a profile change is in progress"},
    {Exit::not_ready, "a daemon is not ready, or its queue is missing"},
};

} // namespace cmifctl

#endif
