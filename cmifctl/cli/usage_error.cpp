#include "usage_error.h"

#include "cmifctl/output/terminal_text.h"
#include "suggestions.h"

namespace cmifctl
{
namespace
{

constexpr const char *see_help = "'cmifctl --help' lists the commands.";
constexpr const char *no_secrets = "secrets are not taken from the command line";

std::string quoted(const std::string &text)
{
    return "'" + escape_controls(text) + "'";
}

std::string full_path(const std::string &path)
{
    return path.empty() ? "cmifctl" : "cmifctl " + path;
}

std::string joined(const std::vector<std::string> &words)
{
    std::string text;
    for (const std::string &word : words)
        text.append(text.empty() ? "" : ", ").append(word);
    return text;
}

[[noreturn]] void fail(const std::string &message, const std::string &hint)
{
    throw Failure(Exit::usage, message, hint);
}

[[noreturn]] void fail_secret(const Command &command, const std::string &what)
{
    fail(what + " for " + quoted(full_path(command.path)) + ": " + no_secrets,
         "Leave it out to be asked, or give - to read standard input.");
}

// For a word that may be a secret.
[[noreturn]] void fail_unrepeated(const Command &command, const std::string &what)
{
    if (command.arguments.front().secret)
        fail_secret(command, what);
    const std::string where = full_path(command.path);
    fail(what + " for " + quoted(where), "'" + where + " --help' shows its usage.");
}

} // namespace

void fail_unknown_option(const std::string &path, const Command *command, const std::string &option)
{
    if (command != nullptr && takes_secrets(*command))
        fail_unrepeated(*command, "unknown option");
    const std::string where = full_path(path);
    fail("unknown option " + quoted(option) + " for " + quoted(where),
         "'" + where + " --help' lists the options.");
}

void fail_unknown_command(const std::string &path, const std::string &word)
{
    const std::vector<std::string> known = subcommands_of(path);
    const std::vector<std::string> similar = suggestions(word, known);
    fail("unknown command " + quoted(word) + " in " + quoted(full_path(path)),
         similar.empty() ? "Available: " + joined(known) + "."
                         : "Did you mean: " + joined(similar) + "?");
}

void fail_missing_command(const std::string &path)
{
    fail("missing command after " + quoted(full_path(path)),
         "Available: " + joined(subcommands_of(path)) + ".");
}

void fail_unexpected_argument(const Command &command, const std::string &word)
{
    if (takes_secrets(command))
        fail_unrepeated(command, "too many arguments");
    const std::string where = full_path(command.path);
    fail("unexpected argument " + quoted(word) + " for " + quoted(where),
         "'" + where + " --help' shows its usage.");
}

void fail_missing_argument(const Command &command, const Argument &argument)
{
    fail("missing " + std::string(argument.value) + " for " + quoted(full_path(command.path)),
         argument.choices.empty() ? std::string(argument.value) + ": " + argument.help + "."
                                  : "One of: " + choices(argument.choices, ", ") + ".");
}

void fail_choice(const Command &command, const Argument &argument, const std::string &text)
{
    if (argument.secret && argument.positional())
        fail_secret(command, "too many arguments");
    if (argument.secret) {
        const std::string option = std::string("--") + argument.name;
        fail(no_secrets,
             "Give " + option + " ask to be asked, or " + option + " - to read standard input.");
    }
    const std::string shown = takes_secrets(command) ? "" : " " + quoted(text);
    fail("invalid " + std::string(argument.value) + shown + " for " +
             quoted(full_path(command.path)),
         "One of: " + choices(argument.choices, ", ") + ".");
}

void fail_flag_value(const std::string &option)
{
    fail(option + " takes no value", "Give " + option + " alone.");
}

void fail_empty_value(const std::string &option)
{
    fail(option + "= has no value", "Give the value as the next word; '' is an empty one.");
}

void fail_missing_value(const std::string &option)
{
    fail(option + " needs a value", see_help);
}

void fail_option_as_value(const std::string &option)
{
    fail(option + " needs a value, not another option",
         "Write " + option + "=VALUE for a value that begins with --.");
}

void fail_repeated(const std::string &option)
{
    fail(option + " is given more than once", see_help);
}

void fail_option_choice(const Argument &option, const std::string &text)
{
    fail(std::string("--") + option.name + " takes " + choices(option.choices, ", ") + ", not " +
             quoted(text),
         see_help);
}

void fail_seconds(const std::string &source, const std::string &text, const std::string &range)
{
    fail(source + " takes a number of seconds, not " + quoted(text), range);
}

void fail_exclusive(const std::string &option, const std::string &other)
{
    fail(option + " and " + other + " exclude each other", "Give one of them.");
}

void fail_not_reading(const Command &command, const std::string &option)
{
    fail(option + " is for commands that only read, not for " + quoted(full_path(command.path)),
         "Leave " + option + " out.");
}

} // namespace cmifctl
