#include "help.h"

#include "argument_text.h"

#include <algorithm>

namespace cli
{
namespace
{

struct Row {
    std::string left;
    std::string right;
};

struct Block {
    std::string title;
    std::vector<Row> rows{};
};

// The blocks that have rows, each after an empty line, their columns aligned with each other.
std::string blocks_text(const std::vector<Block> &blocks)
{
    std::size_t left = 0;
    for (const Block &block : blocks)
        for (const Row &row : block.rows)
            left = std::max(left, row.left.size());
    std::string text;
    for (const Block &block : blocks) {
        if (!block.rows.empty())
            text += "\n" + block.title + ":\n";
        for (const Row &row : block.rows)
            text +=
                "  " + row.left + std::string(left - row.left.size() + 2, ' ') + row.right + "\n";
    }
    return text;
}

// Broken into lines between words.
std::string wrapped(std::string text)
{
    constexpr std::size_t columns = 96;
    std::size_t start = 0;
    while (text.size() - start > columns) {
        const std::size_t end = text.rfind(' ', start + columns);
        text[end] = '\n';
        start = end + 1;
    }
    return text.empty() ? "" : text + "\n";
}

Block argument_block(const char *title, ArgumentRows arguments)
{
    Block block{title};
    for (const Argument &argument : arguments)
        block.rows.push_back({usage_of(argument), meaning_of(argument)});
    return block;
}

Block term_block(const char *title, std::span<const Term> terms)
{
    Block block{title};
    for (const Term &term : terms)
        block.rows.push_back({term.name, term.meaning});
    return block;
}

// Of the program; those of readings where a command may be one.
std::vector<Block> option_blocks(const Program &program, bool may_read)
{
    return {argument_block("Options of every command", program.options),
            argument_block("Options of commands that only read",
                           may_read ? program.reading_options : ArgumentRows())};
}

bool is_below(const Command &command, const std::string &path)
{
    return std::string_view(command.path).starts_with(path + " ");
}

std::string command_help(const Program &program, const Command &command)
{
    return sentence(command.summary) + "\n" + wrapped(command.details) +
           blocks_text({argument_block("Arguments", command.arguments)}) + "\nExample:\n  " +
           example_of(program, command) + "\n" +
           blocks_text(option_blocks(program, command.access != Access::acts));
}

Block access_block(const Program &program, const std::string &path, const char *title,
                   Access access)
{
    Block block{title};
    for (const Command &command : program.commands)
        if (is_below(command, path) && command.access == access)
            block.rows.push_back({command.path, command.summary});
    return block;
}

bool has_readings(const Program &program, const std::string &path)
{
    return std::any_of(program.commands.begin(), program.commands.end(),
                       [&path](const Command &command) {
                           return is_below(command, path) && command.access != Access::acts;
                       });
}

std::string group_help(const Program &program, const std::string &path)
{
    std::string text;
    for (const Group &group : program.groups)
        if (path == group.name)
            text = sentence(group.summary) + "\n";
    return text +
           blocks_text({access_block(program, path, "Reading", Access::reads),
                        access_block(program, path, "Reading, or setting when a value is given",
                                     Access::either),
                        access_block(program, path, "Actions", Access::acts)}) +
           blocks_text(option_blocks(program, has_readings(program, path)));
}

// Those without a group, then each group's.
std::vector<Block> command_blocks(const Program &program)
{
    std::vector<Block> blocks{{"Commands"}};
    for (const Command &command : program.commands)
        if (*command.path != '\0' &&
            std::string_view(command.path).find(' ') == std::string_view::npos)
            blocks.front().rows.push_back({command.path, command.summary});
    for (const Group &group : program.groups) {
        blocks.push_back({sentence(group.summary)});
        blocks.back().title.pop_back(); // the full stop
        for (const Command &command : program.commands)
            if (is_below(command, group.name))
                blocks.back().rows.push_back({command.path, command.summary});
    }
    return blocks;
}

std::string program_help(const Program &program)
{
    const Command *own = find_command(program, "");
    return sentence(program.summary) + "\n" +
           (own ? wrapped(own->details) + blocks_text({argument_block("Arguments", own->arguments)})
                : "") +
           blocks_text(command_blocks(program)) + blocks_text(option_blocks(program, true)) +
           blocks_text({term_block("Examples", program.examples)}) +
           blocks_text({term_block("Exit status", program.exit_status)});
}

} // namespace

std::string help_text(const Program &program, const std::string &path)
{
    const std::string usage = "Usage: " + synopsis_of(program, path) + "\n\n";
    if (path.empty())
        return usage + program_help(program);
    if (const Command *command = find_command(program, path))
        return usage + command_help(program, *command);
    return usage + group_help(program, path);
}

std::string short_help(const Program &program)
{
    const std::string name = program.name;
    Block block{"Commands"};
    for (const Candidate &word : subcommands_of(program, ""))
        block.rows.push_back({word.value, word.description});
    const std::string groups =
        program.groups.empty() ? "" : "'" + name + " GROUP --help' lists the commands of a group, ";
    return "Usage: " + synopsis_of(program, "") + "\n" + blocks_text({block}) + "\n" + groups +
           "'" + name + " --help' " + (groups.empty() ? "shows more.\n" : "all of them.\n");
}

} // namespace cli
