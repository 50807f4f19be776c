#include "line.h"

#include "option_error.h"
#include "walker.h"

#include <algorithm>

namespace cli
{
namespace
{

using Kind = Argument::Kind;

bool asks_for_help(std::span<const char *const> words)
{
    const auto end = std::find(words.begin(), words.end(), std::string_view("--"));
    return std::any_of(words.begin(), end,
                       [](std::string_view word) { return word == "--help" || word == "-h"; });
}

void check_arguments(const Line &line, ArgumentRows rows, const Arguments &given)
{
    for (const Argument &argument : rows) {
        const auto text = given.given(argument.name);
        if (!text && argument.kind == Kind::required)
            fail_missing_argument(line, argument);
        if (text && !argument.choices.empty() && !code_of(argument.choices, *text))
            fail_choice(line, argument, *text);
    }
}

void check_readings(const Line &line)
{
    for (const Argument &option : line.program->reading_options)
        if (line.options.has(option.name) && !only_reads(line))
            fail_not_reading(line, option);
}

} // namespace

bool only_reads(const Line &line)
{
    const ArgumentRows arguments = line.command->arguments;
    const bool changes = !arguments.empty() && line.arguments.has(arguments.front().name);
    return line.command->access == Access::reads ||
           (line.command->access == Access::either && !changes);
}

std::vector<const Argument *> options_of(const Line &line)
{
    std::vector<const Argument *> options;
    const auto add = [&options](ArgumentRows rows) {
        for (const Argument &argument : rows)
            if (argument.by_name())
                options.push_back(&argument);
    };
    if (line.command != nullptr)
        add(line.command->arguments);
    add(line.program->options);
    if (line.command == nullptr || only_reads(line))
        add(line.program->reading_options);
    return options;
}

std::string Line::full_path() const
{
    return path.empty() ? program->name : program->name + (" " + path);
}

Line parse(const Program &program, std::span<const char *const> words)
{
    Walker walker(program);
    try {
        for (const char *word : words)
            walker.take(word);
        walker.finish();
    } catch (const UsageError &) {
        if (!asks_for_help(words))
            throw;
        Line line = walker.line();
        line.options.add(help_option.name, "");
        return line;
    }
    const Line &line = walker.line();
    if (line.help() || line.version())
        return line;
    if (line.command == nullptr)
        fail_missing_command(line);
    check_readings(line);
    check_arguments(line, program.options, line.options);
    check_arguments(line, program.reading_options, line.options);
    check_arguments(line, line.command->arguments, line.arguments);
    return line;
}

} // namespace cli
