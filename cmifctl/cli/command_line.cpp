#include "command_line.h"

#include "global_options.h"
#include "usage_error.h"

#include <algorithm>

namespace cmifctl
{
namespace
{

using Kind = Argument::Kind;

// Walks over the words once: groups and verbs, until they name a command; options; arguments.
class Walker
{
public:
    Walker(int count, const char *const *words) : words_(words, words + count) {}

    CommandLine walk()
    {
        while (next_ < words_.size())
            take(words_[next_++]);
        line_.help = globals_.has("help");
        line_.version = globals_.has("version");
        return std::move(line_);
    }

    const Arguments &globals() const { return globals_; }

private:
    void take(const std::string &word)
    {
        if (!options_ended_ && word == "--")
            options_ended_ = true;
        else if (!options_ended_ && word.starts_with('-') && word != "-")
            take_option(word);
        else if (line_.command == nullptr)
            take_command_word(word);
        else
            take_positional(word);
    }

    void take_command_word(const std::string &word)
    {
        const std::vector<std::string> known = subcommands_of(line_.path);
        if (std::find(known.begin(), known.end(), word) == known.end())
            fail_unknown_command(line_.path, word);
        line_.path += (line_.path.empty() ? "" : " ") + word;
        line_.command = find_command(line_.path);
    }

    void take_positional(const std::string &word)
    {
        for (const Argument &argument : line_.command->arguments) {
            if (!argument.positional() || line_.context.arguments.has(argument.name))
                continue;
            line_.context.arguments.set(argument.name, word);
            return;
        }
        fail_unexpected_argument(*line_.command, word);
    }

    // "--name", "--name value", "--name=value", "-n"
    void take_option(const std::string &word)
    {
        const std::size_t equals = word.find('=');
        const std::string option = word.substr(0, equals);
        const auto assigned =
            equals == std::string::npos ? std::nullopt : std::optional(word.substr(equals + 1));
        if (const Argument *argument = find(global_options(), option))
            return set(globals_, *argument, assigned);
        if (line_.command != nullptr)
            if (const Argument *argument = find(line_.command->arguments, option))
                return set(line_.context.arguments, *argument, assigned);
        fail_unknown_option(line_.path, line_.command, word);
    }

    static const Argument *find(ArgumentRows rows, const std::string &option)
    {
        for (const Argument &row : rows) {
            const bool by_letter = row.letter != '\0' && option == std::string("-") + row.letter;
            if (!row.positional() && (by_letter || option == std::string("--") + row.name))
                return &row;
        }
        return nullptr;
    }

    void set(Arguments &arguments, const Argument &argument,
             const std::optional<std::string> &assigned)
    {
        const std::string option = std::string("--") + argument.name;
        if (argument.kind == Kind::flag) {
            if (assigned && *argument.value == '\0')
                fail_flag_value(option);
            return arguments.set(argument.name, assigned.value_or(""));
        }
        if (arguments.has(argument.name) && !argument.repeats)
            fail_repeated(option);
        if (assigned && assigned->empty())
            fail_empty_value(option);
        arguments.add(argument.name, assigned ? *assigned : next_value(option));
    }

    std::string next_value(const std::string &option)
    {
        if (next_ == words_.size())
            fail_missing_value(option);
        if (words_[next_].starts_with("--"))
            fail_option_as_value(option);
        return words_[next_++];
    }

    std::vector<std::string> words_;
    std::size_t next_ = 1; // after the program's name
    bool options_ended_ = false;
    Arguments globals_;
    CommandLine line_;
};

void check_arguments(const Command &command, const Arguments &given)
{
    for (const Argument &argument : command.arguments) {
        const auto text = given.given(argument.name);
        if (!text && argument.kind == Kind::required)
            fail_missing_argument(command, argument);
        if (text && !argument.choices.empty() && !code_of(argument.choices, *text))
            fail_choice(command, argument, *text);
    }
}

// What only reads can be repeated, and its document looked at before anything depends on it.
void check_reading(const Command &command, const Context &context)
{
    if (only_reads(command, context.arguments))
        return;
    if (context.output.watch)
        fail_not_reading(command, "--watch");
    if (!context.output.fields.empty())
        fail_not_reading(command, "--field");
}

} // namespace

CommandLine parse(int count, const char *const *words)
{
    Walker walker(count, words);
    CommandLine line = walker.walk();
    take_global_options(walker.globals(), line.context);
    if (line.help || line.version) {
        line.command = nullptr;
        return line;
    }
    if (line.command == nullptr)
        fail_missing_command(line.path);
    check_arguments(*line.command, line.context.arguments);
    check_reading(*line.command, line.context);
    return line;
}

bool wants_json(int count, const char *const *words)
{
    const char *const *end = std::find(words, words + count, std::string_view("--"));
    return std::any_of(words, end, [words](const char *const &place) {
        const std::string_view word = place;
        const std::string_view before = &place == words ? "" : *(&place - 1);
        const bool is_format = word == "json" && (before == "-o" || before == "--output");
        return word == "--json" || word.starts_with("--json=") || word == "--output=json" ||
               word == "-o=json" || is_format;
    });
}

} // namespace cmifctl
