#include "help.h"

#include "argument_text.h"
#include "cmifctl/output/terminal_text.h"

#include <algorithm>

namespace cmifctl
{
namespace
{

struct Row {
    std::string left;
    std::string right;
};

std::string rows_text(const std::vector<Row> &rows)
{
    std::size_t left = 0;
    for (const Row &row : rows)
        left = std::max(left, row.left.size());
    std::string text;
    for (const Row &row : rows)
        text += "  " + padded(row.left, left) + "  " + row.right + "\n";
    return text;
}

std::string arguments_text(ArgumentRows arguments)
{
    std::vector<Row> rows;
    for (const Argument &argument : arguments)
        rows.push_back({usage_of(argument), meaning_of(argument)});
    return rows_text(rows);
}

std::string command_help(const Command &command)
{
    std::string text = "Usage: " + synopsis_of(command) + "\n\n" + command.summary + "\n";
    if (*command.details != '\0')
        text += std::string(command.details) + "\n";
    if (!command.arguments.empty())
        text += "\n" + arguments_text(command.arguments);
    return text + "\nOptions of every command:\n" + arguments_text(global_options());
}

std::string list_help(const std::string &path)
{
    std::vector<Row> rows;
    for (const Command &command : commands())
        if (path.empty() || std::string_view(command.path).starts_with(path + " "))
            rows.push_back({command.path, command.summary});
    return rows_text(rows);
}

std::string exit_help()
{
    std::vector<Row> rows;
    for (const ExitMeaning &row : exit_meanings)
        rows.push_back({std::to_string(static_cast<int>(row.status)), row.meaning});
    return rows_text(rows);
}

} // namespace

std::string help_text(const std::string &path)
{
    if (const Command *command = find_command(path))
        return command_help(*command);
    const std::string where = path.empty() ? "GROUP" : path;
    std::string text = "Usage: cmifctl [OPTIONS] " + where + " VERB [ARGS]\n\n" + list_help(path) +
                       "\nOptions of every command:\n" + arguments_text(global_options());
    if (path.empty())
        text += "\nExit status:\n" + exit_help();
    return text;
}

std::string short_help()
{
    std::vector<Row> rows;
    for (const Group &group : groups())
        rows.push_back({group.name, group.summary});
    return "Usage: cmifctl [OPTIONS] GROUP VERB [ARGS]\n\n" + rows_text(rows) +
           "\n'cmifctl GROUP --help' lists the commands of a group, 'cmifctl --help' all of "
           "them.\n";
}

void print_completion(Context &context)
{
    context.report.text("script", completion_script(context.arguments.text("shell")));
}

void print_manual(Context &context)
{
    context.report.text("page", manual_page());
}

} // namespace cmifctl
