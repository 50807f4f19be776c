#include "walker.h"

#include "option_error.h"

#include <algorithm>

namespace cli
{
namespace
{

using Kind = Argument::Kind;

const Argument *find(ArgumentRows rows, const std::string &option)
{
    const auto found = std::find_if(rows.begin(), rows.end(), [&option](const Argument &row) {
        const bool by_letter =
            row.traits.letter != '\0' && option == std::string("-") + row.traits.letter;
        return row.by_name() && (by_letter || option == std::string("--") + row.name);
    });
    return found == rows.end() ? nullptr : &*found;
}

} // namespace

void Walker::take(const std::string &word)
{
    if (rest_ != nullptr)
        line_.arguments.add(rest_->name, word);
    else if (awaiting_ != nullptr)
        take_value(word);
    else if (!options_ended_ && word == "--")
        end_options();
    else if (!options_ended_ && word.starts_with('-') && word != "-")
        take_option(word);
    else if (line_.command == nullptr || names_command(word))
        take_command_word(word);
    else
        take_positional(word);
}

void Walker::finish() const
{
    if (awaiting_ != nullptr)
        fail_missing_value(line_, *awaiting_);
}

void Walker::end_options()
{
    options_ended_ = true;
    if (line_.command != nullptr)
        for (const Argument &argument : line_.command->arguments)
            if (argument.kind == Kind::rest)
                rest_ = &argument;
}

// Instead of the first argument of the command without a word.
bool Walker::names_command(const std::string &word) const
{
    return line_.path.empty() && line_.arguments.empty() && !options_ended_ &&
           find_command(*line_.program, word) != nullptr;
}

void Walker::take_command_word(const std::string &word)
{
    const auto known = subcommands_of(*line_.program, line_.path);
    if (std::none_of(known.begin(), known.end(),
                     [&word](const Candidate &next) { return next.value == word; }))
        fail_unknown_command(line_, word);
    line_.path += (line_.path.empty() ? "" : " ") + word;
    line_.command = find_command(*line_.program, line_.path);
}

const Argument *Walker::next_positional() const
{
    if (rest_ != nullptr)
        return rest_;
    if (line_.command != nullptr)
        for (const Argument &argument : line_.command->arguments)
            if (argument.positional() && !line_.arguments.has(argument.name))
                return &argument;
    return nullptr;
}

void Walker::take_positional(const std::string &word)
{
    const Argument *argument = next_positional();
    if (argument == nullptr)
        fail_unexpected_argument(line_, word);
    line_.arguments.add(argument->name, word);
    if (argument->traits.repeats)
        rest_ = argument;
}

const Argument *Walker::find_program_option(const std::string &option) const
{
    const Argument *found = find(line_.program->options, option);
    return found != nullptr ? found : find(line_.program->reading_options, option);
}

const Argument *Walker::find_option(const std::string &option) const
{
    const Argument *found = find_program_option(option);
    if (found == nullptr && line_.command != nullptr)
        found = find(line_.command->arguments, option);
    return found;
}

// "--name", "--name value", "--name=value", "-n"
void Walker::take_option(const std::string &word)
{
    const std::size_t equals = word.find('=');
    const Argument *option = find_option(word.substr(0, equals));
    if (option == nullptr)
        fail_unknown_option(line_, word);
    const auto assigned =
        equals == std::string::npos ? std::nullopt : std::optional(word.substr(equals + 1));
    if (option->kind == Kind::flag)
        return take_flag(*option, assigned);
    if (!option->traits.repeats && arguments_with(*option).has(option->name))
        fail_repeated(line_, *option);
    if (!assigned)
        awaiting_ = option;
    else if (assigned->empty())
        fail_empty_value(*option);
    else
        arguments_with(*option).add(option->name, *assigned);
}

void Walker::take_flag(const Argument &flag, const std::optional<std::string> &assigned)
{
    if (assigned && *flag.value == '\0')
        fail_flag_value(flag);
    if (assigned && assigned->empty())
        fail_empty_value(flag);
    arguments_with(flag).add(flag.name, assigned.value_or(""));
}

void Walker::take_value(const std::string &word)
{
    if (word.starts_with("--"))
        fail_option_as_value(*awaiting_);
    arguments_with(*awaiting_).add(awaiting_->name, word);
    awaiting_ = nullptr;
}

Arguments &Walker::arguments_with(const Argument &option)
{
    const bool of_program = find_program_option(std::string("--") + option.name) != nullptr;
    return of_program ? line_.options : line_.arguments;
}

} // namespace cli
