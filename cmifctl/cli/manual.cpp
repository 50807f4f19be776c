#include "argument_text.h"
#include "help.h"

namespace cmifctl
{

namespace
{

// Text that troff takes as it is.
std::string plain(std::string_view text)
{
    std::string out;
    for (const char letter : text) {
        if (letter == '\\' || letter == '-')
            out += '\\';
        out += letter;
        if (letter == '\\')
            out += 'e';
    }
    if (out.starts_with('.') || out.starts_with('\''))
        out.insert(0, "\\&");
    return out;
}

std::string entry(const std::string &term, const std::string &text)
{
    return ".TP\n.B " + plain(term) + "\n" + plain(text) + "\n";
}

std::string arguments_page(std::span<const Argument> arguments)
{
    std::string page;
    for (const Argument &argument : arguments)
        page += entry(usage_of(argument), meaning_of(argument) + ".");
    return page;
}

std::string command_page(const Command &command)
{
    std::string page = ".SS " + plain(synopsis_of(command).substr(sizeof "cmifctl [OPTIONS]")) +
                       "\n" + plain(command.summary) + ".\n" + plain(command.more) + "\n";
    return page + arguments_page(command.arguments);
}

} // namespace

std::string manual_page()
{
    std::string page = ".TH CMIFCTL 1 \"\" \"CMIF " CMIF_VERSION "\" \"CMIF\"\n"
                       ".SH NAME\ncmifctl \\- read and steer the LTE modem of a router\n"
                       ".SH SYNOPSIS\n.B cmifctl\n[OPTIONS] GROUP VERB [ARGS]\n"
                       ".SH DESCRIPTION\n"
                       "People read aligned sections and tables; with\n.B \\-\\-json\n"
                       "one document stands on standard output, whatever happens. Notes, progress "
                       "and errors go to standard error.\n"
                       "PIN, PUK, password and control key are asked for without echo, or read "
                       "from standard input with\n.BR \\- .\n"
                       ".SH OPTIONS\n" +
                       arguments_page(global_options()) + ".SH COMMANDS\n";
    for (const Command &command : commands())
        page += command_page(command);
    page += ".SH EXIT STATUS\n";
    for (const ExitMeaning &row : exit_meanings)
        page += entry(std::to_string(static_cast<int>(row.status)), std::string(row.meaning) + ".");
    return page + ".SH ENVIRONMENT\n" + entry("NO_COLOR", "No colour on a terminal.") +
           entry("COLUMNS", "The width of tables where standard output is no terminal.") +
           entry("CMIF_STORE", "The directory of the development host's configuration store.");
}

} // namespace cmifctl
