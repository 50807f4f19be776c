#include "usage_error.h"

#include "suggestions.h"

#include <algorithm>
#include <utility>

namespace cli
{
namespace
{

constexpr const char *no_secrets = "secrets are not taken from the command line";

std::string joined(const std::vector<std::string> &words)
{
    std::string text;
    for (const std::string &word : words)
        text.append(text.empty() ? "" : ", ").append(word);
    return text;
}

std::string suggestion(const std::vector<std::string> &similar)
{
    return "Did you mean: " + joined(similar) + "?";
}

// PINs, PUKs and keys are digits; a password may be any word.
bool may_be_secret(const Line &line, const std::string &word)
{
    return (line.command != nullptr && takes_secrets(*line.command)) ||
           std::any_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// " 'word'", or nothing.
std::string repeated(const Line &line, const std::string &word)
{
    return may_be_secret(line, word) ? "" : " " + quoted(word);
}

[[noreturn]] void fail_secret(const Line &line, const std::string &what)
{
    throw UsageError(what + " for " + quoted(line.full_path()) + ": " + no_secrets,
                     "Leave it out to be asked, or give - to read standard input.");
}

// Whether the command reads secrets from standard input when it is given "-".
bool takes_secret_source(const Line &line)
{
    return line.command != nullptr &&
           std::any_of(line.command->arguments.begin(), line.command->arguments.end(),
                       [](const Argument &argument) {
                           return argument.traits.secret && argument.positional() &&
                                  !argument.choices.empty();
                       });
}

std::vector<std::string> known_options(const Line &line)
{
    std::vector<std::string> names;
    for (const Argument *option : options_of(line))
        names.push_back(dashed(*option));
    return names;
}

std::vector<std::string> paths_of(const Program &program)
{
    std::vector<std::string> paths;
    for (const Command &command : program.commands)
        paths.emplace_back(command.path);
    return paths;
}

std::vector<std::string> known_words(const Line &line)
{
    std::vector<std::string> words;
    for (const Candidate &next : subcommands_of(*line.program, line.path))
        words.push_back(next.value);
    return words;
}

} // namespace

std::string quoted(const std::string &text)
{
    return "'" + text + "'";
}

std::string dashed(const Argument &option)
{
    return std::string("--") + option.name;
}

std::string see_help(const Line &line, const std::string &what)
{
    return quoted(line.full_path() + " --help") + " " + what + ".";
}

UsageError::UsageError(const std::string &message, std::string hint)
    : std::runtime_error(message), hint_(std::move(hint))
{
}

void fail_unknown_option(const Line &line, const std::string &word)
{
    const std::string name = word.substr(0, word.find('='));
    const std::vector<std::string> similar = suggestions(name, known_options(line));
    if (similar.empty() && takes_secret_source(line))
        fail_secret(line, "unknown option");
    throw UsageError("unknown option" + repeated(line, name) + " for " + quoted(line.full_path()),
                     similar.empty() ? see_help(line, "lists the options") : suggestion(similar));
}

void fail_unknown_command(const Line &line, const std::string &word)
{
    const std::vector<std::string> known = known_words(line);
    std::vector<std::string> similar = suggestions(word, known);
    if (similar.empty() && line.path.empty())
        similar = suggestions(word, paths_of(*line.program));
    throw UsageError("unknown command" + repeated(line, word) + " in " + quoted(line.full_path()),
                     similar.empty() ? "Available: " + joined(known) + "." : suggestion(similar));
}

void fail_missing_command(const Line &line)
{
    throw UsageError("missing command after " + quoted(line.full_path()),
                     "Available: " + joined(known_words(line)) + ".");
}

void fail_unexpected_argument(const Line &line, const std::string &word)
{
    if (takes_secret_source(line))
        fail_secret(line, "too many arguments");
    if (may_be_secret(line, word))
        throw UsageError("too many arguments for " + quoted(line.full_path()),
                         see_help(line, "shows its usage"));
    throw UsageError("unexpected argument " + quoted(word) + " for " + quoted(line.full_path()),
                     see_help(line, "shows its usage"));
}

void fail_missing_argument(const Line &line, const Argument &argument)
{
    throw UsageError("missing " + std::string(argument.value) + " for " + quoted(line.full_path()),
                     argument.choices.empty()
                         ? std::string(argument.value) + ": " + argument.help + "."
                         : "One of: " + list_of(argument.choices) + ".");
}

void fail_choice(const Line &line, const Argument &argument, const std::string &text)
{
    if (argument.traits.secret && argument.positional())
        fail_secret(line, "too many arguments");
    if (argument.traits.secret)
        throw UsageError(no_secrets, "Give " + dashed(argument) + " ask to be asked, or " +
                                         dashed(argument) + " - to read standard input.");
    const std::string shown = takes_secrets(*line.command) ? "" : " " + quoted(text);
    const std::string place = argument.by_name() ? dashed(argument) : quoted(line.full_path());
    throw UsageError("invalid " + std::string(argument.value) + shown + " for " + place,
                     "One of: " + list_of(argument.choices) + ".");
}

} // namespace cli
