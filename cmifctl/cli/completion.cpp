#include "commands.h"
#include "help.h"

#include <set>

namespace cmifctl
{
namespace
{

std::string space_separated(const std::vector<std::string> &words)
{
    std::string text;
    for (const std::string &word : words)
        text.append(text.empty() ? "" : " ").append(word);
    return text;
}

std::string options_of(ArgumentRows arguments)
{
    std::vector<std::string> words;
    for (const Argument &argument : arguments)
        if (!argument.positional())
            words.push_back(std::string("--") + argument.name);
    return space_separated(words);
}

// As a pattern of a shell's case statement.
std::string global_options_with_values()
{
    std::string pattern;
    for (const Argument &argument : global_options())
        if (argument.kind == Argument::Kind::option)
            pattern.append(pattern.empty() ? "--" : "|--").append(argument.name);
    return pattern;
}

// The choices for a command's first argument.
std::string first_choices(const Command &command)
{
    for (const Argument &argument : command.arguments)
        if (argument.positional())
            return choices(argument.choices, " ");
    return "";
}

// The script's case statement: what may follow each path.
std::string cases()
{
    std::set<std::string> paths{""};
    for (const Command &command : commands()) {
        const std::string path = command.path;
        for (std::size_t at = path.find(' '); at != std::string::npos; at = path.find(' ', at + 1))
            paths.insert(path.substr(0, at));
    }
    std::string text;
    for (const std::string &path : paths)
        text += "    '" + path + "') follow='" + space_separated(subcommands_of(path)) + "' ;;\n";
    for (const Command &command : commands())
        text += std::string("    '") + command.path + "') follow='" + first_choices(command) +
                "' flags='" + options_of(command.arguments) + "' ;;\n" + "    '" + command.path +
                " '*) flags='" + options_of(command.arguments) + "' ;;\n";
    return text;
}

// For both shells: sets $follow and $flags to what may follow the words before the cursor.
std::string finder()
{
    return "_cmifctl_words() { # the words before the cursor\n"
           "    local typed='' word skip=''\n"
           "    follow='' flags=''\n"
           "    for word in \"$@\"; do\n"
           "        if [ -n \"$skip\" ]; then skip=''; continue; fi\n"
           "        case $word in\n"
           "        " +
           global_options_with_values() +
           ") skip=1 ;;\n"
           "        -*) ;;\n"
           "        *) typed=\"${typed:+$typed }$word\" ;;\n"
           "        esac\n"
           "    done\n"
           "    case $typed in\n" +
           cases() +
           "    esac\n"
           "    flags=\"$flags " +
           options_of(global_options()) +
           "\"\n"
           "}\n";
}

} // namespace

std::string completion_script(const std::string &shell)
{
    if (shell == "zsh")
        return "#compdef cmifctl\n" + finder() +
               "_cmifctl() {\n"
               "    local follow flags\n"
               "    _cmifctl_words \"${(@)words[2,CURRENT-1]}\"\n"
               "    case $words[CURRENT] in\n"
               "    -*) compadd -- ${=flags} ;;\n"
               "    *) compadd -- ${=follow} ;;\n"
               "    esac\n"
               "}\n"
               "compdef _cmifctl cmifctl\n";
    return finder() + "_cmifctl() {\n"
                      "    local follow flags current=${COMP_WORDS[COMP_CWORD]}\n"
                      "    _cmifctl_words \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"\n"
                      "    case $current in\n"
                      "    -*) follow=$flags ;;\n"
                      "    esac\n"
                      "    mapfile -t COMPREPLY < <(compgen -W \"$follow\" -- \"$current\")\n"
                      "}\n"
                      "complete -F _cmifctl cmifctl\n";
}

} // namespace cmifctl
