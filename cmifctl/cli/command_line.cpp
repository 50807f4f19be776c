#include "command_line.h"

#include "cmifctl/output/text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <numeric>

namespace cmifctl
{

namespace
{

using Kind = Argument::Kind;

std::size_t distance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
        }
    }
    return row[b.size()];
}

std::string joined(const std::vector<std::string> &words)
{
    std::string text;
    for (const std::string &word : words)
        text.append(text.empty() ? "" : ", ").append(word);
    return text;
}

void add_argument(CLI::App &app, const Argument &argument, Arguments &given)
{
    const std::string name = argument.name;
    const bool positional = argument.kind == Kind::required || argument.kind == Kind::optional;
    if (argument.kind == Kind::flag)
        app.add_flag_callback("--" + name, [name, &given] { given.set(name, ""); });
    else
        app.add_option_function<std::string>(
            positional ? name : "--" + name,
            [name, &given](const std::string &value) { given.set(name, value); });
}

// The app of each path, with every word of the table as a subcommand of the one before it.
class Parser
{
public:
    explicit Parser(CommandLine &line) : line_(line)
    {
        app_.set_help_flag();
        app_.allow_extras();
        app_.add_flag("--json", line.run.options.json);
        app_.add_flag("--trace", line.run.options.trace);
        app_.add_flag("-h,--help", line.help);
        app_.add_flag("-V,--version", line.version);
        app_.add_option_function<std::string>("--timeout", [&line](const std::string &text) {
            line.run.options.timeout = seconds(text);
        });
        for (const Command &command : commands())
            for (const Argument &argument : command.arguments)
                add_argument(app_for(command.path), argument, line.run.arguments);
        for (const Command &command : commands())
            app_for(command.path); // those without arguments
    }

    void parse(int count, const char *const *words)
    {
        try {
            app_.parse(count, words);
        } catch (const CLI::ArgumentMismatch &error) {
            const std::string text = error.what(); // "--timeout: 1 required TEXT missing"
            throw Failure(Exit::usage,
                          text.substr(0, text.find(':')) + (text.ends_with("missing")
                                                                ? " needs a value"
                                                                : " is given more than once"),
                          "'cmifctl --help' lists the commands.");
        } catch (const CLI::ParseError &error) {
            throw Failure(Exit::usage, error.what(), "'cmifctl --help' lists the commands.");
        }
        for (const auto &[path, app] : apps_)
            if (app->parsed() && path.size() > line_.path.size())
                line_.path = path;
    }

    std::vector<std::string> not_understood() const { return app_.remaining(true); }

private:
    static double seconds(const std::string &text)
    {
        constexpr double most = 1e6;
        const auto number = decimal_number(text);
        if (!number || *number < 0 || *number > most)
            throw Failure(Exit::usage,
                          "--timeout takes a number of seconds, not '" + safe(text) + "'",
                          "From 0 to 1000000; 0 waits for ever.");
        return *number;
    }

    CLI::App &app_for(const std::string &path)
    {
        if (const auto found = apps_.find(path); found != apps_.end())
            return *found->second;
        const std::size_t blank = path.rfind(' ');
        CLI::App &parent = blank == std::string::npos ? app_ : app_for(path.substr(0, blank));
        CLI::App &app = *parent.add_subcommand(path.substr(blank + 1));
        app.set_help_flag();
        app.fallthrough();
        apps_[path] = &app;
        return app;
    }

    CommandLine &line_;
    CLI::App app_;
    std::map<std::string, CLI::App *> apps_;
};

bool is_flag(std::string_view name)
{
    const auto among = [name](std::span<const Argument> arguments) {
        return std::any_of(arguments.begin(), arguments.end(), [name](const Argument &argument) {
            return argument.kind == Kind::flag && argument.name == name;
        });
    };
    const auto all = commands();
    return among(global_options()) ||
           std::any_of(all.begin(), all.end(),
                       [&among](const Command &command) { return among(command.arguments); });
}

// "--name=value", which the parser would take for a flag, or go on to the next word for a value.
void check_assignment(std::string_view word)
{
    const std::size_t end = word.find('=');
    if (!word.starts_with("--") || end == std::string_view::npos)
        return;
    const std::string option(word.substr(0, end));
    if (is_flag(option.substr(2)))
        throw Failure(Exit::usage, option + " takes no value", "Give " + option + " alone.");
    if (end + 1 == word.size())
        throw Failure(Exit::usage, safe(option) + "= has no value",
                      "Give the value as the next word; '' is an empty one.");
}

[[noreturn]] void fail_secret(const std::string &message)
{
    throw Failure(Exit::usage, message + ": secrets are not taken from the command line",
                  "Leave it out to be asked, or give - to read standard input.");
}

[[noreturn]] void fail_unknown(const std::string &path, const std::string &word)
{
    const std::string where = path.empty() ? "cmifctl" : "cmifctl " + path;
    // What is too much may be a secret, and is not repeated.
    if (const Command *command = find_command(path);
        command != nullptr && takes_secrets(*command)) {
        const std::string message = "'" + where + "' does not take all that is given";
        if (command->arguments.front().secret)
            fail_secret(message);
        throw Failure(Exit::usage, message, "'" + where + " --help' shows what it takes.");
    }
    if (word.starts_with('-'))
        throw Failure(Exit::usage, "'" + safe(word) + "' is no option of '" + where + "'",
                      "'" + where + " --help' lists them.");
    const std::vector<std::string> candidates = words_after(path);
    if (candidates.empty())
        throw Failure(Exit::usage,
                      "'" + safe(word) + "' is one argument too many for '" + where + "'",
                      "'" + where + " --help' shows what it takes.");
    const std::vector<std::string> near = near_matches(word, candidates);
    throw Failure(Exit::usage, "'" + safe(word) + "' is no verb of '" + where + "'",
                  near.empty() ? "There are: " + joined(candidates) + "."
                               : "Did you mean: " + joined(near) + "?");
}

[[noreturn]] void fail_choice(const Command &command, const Argument &argument,
                              const std::string &text)
{
    const std::string where = std::string("'cmifctl ") + command.path + "'";
    if (argument.kind == Kind::option && argument.secret)
        throw Failure(Exit::usage, "secrets are not taken from the command line",
                      std::string("Give --") + argument.name + " ask to be asked, or --" +
                          argument.name + " - to read standard input.");
    if (argument.secret)
        fail_secret(where + " does not take all that is given");
    const std::string what = takes_secrets(command) ? "what is given" : "'" + safe(text) + "'";
    throw Failure(Exit::usage, what + " is no " + argument.value + " of " + where,
                  "One of: " + choices(argument.choices, ", ") + ".");
}

void check_arguments(const Command &command, const Arguments &given)
{
    for (const Argument &argument : command.arguments) {
        const auto text = given.given(argument.name);
        if (!text && argument.kind == Kind::required)
            throw Failure(
                Exit::usage, std::string("'cmifctl ") + command.path + "' needs " + argument.value,
                argument.choices.empty() ? std::string(argument.value) + ": " + argument.help + "."
                                         : "One of: " + choices(argument.choices, ", ") + ".");
        if (text && !argument.choices.empty() && !code_of(argument.choices, *text))
            fail_choice(command, argument, *text);
    }
}

} // namespace

CommandLine parse(int count, const char *const *words)
{
    CommandLine line;
    Parser parser(line);
    for (int i = 1; i < count && std::string_view(words[i]) != "--"; ++i)
        check_assignment(words[i]);
    parser.parse(count, words);
    if (const auto extras = parser.not_understood(); !extras.empty())
        fail_unknown(line.path, extras.front());
    if (line.help || line.version)
        return line;
    line.command = find_command(line.path);
    if (line.command == nullptr)
        throw Failure(Exit::usage,
                      line.path.empty() ? "no command is given"
                                        : "'cmifctl " + line.path + "' needs a verb",
                      "There are: " + joined(words_after(line.path)) + ".");
    check_arguments(*line.command, line.run.arguments);
    return line;
}

bool wants_json(int count, const char *const *words)
{
    return std::any_of(words, words + count, [](std::string_view word) {
        return word == "--json" || word.starts_with("--json=");
    });
}

std::vector<std::string> near_matches(std::string_view word,
                                      const std::vector<std::string> &candidates)
{
    std::vector<std::string> near;
    for (const std::string &candidate : candidates)
        if ((word.size() > 1 && candidate.find(word) != std::string::npos) ||
            distance(word, candidate) <= 2)
            near.push_back(candidate);
    return near;
}

} // namespace cmifctl
