#include "argument_text.h"
#include "help.h"

namespace cmifctl
{
namespace
{

// Text escaped for troff.
std::string escaped(std::string_view text)
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
    return ".TP\n.B " + escaped(term) + "\n" + escaped(text) + "\n";
}

std::string arguments_page(ArgumentRows arguments)
{
    std::string page;
    for (const Argument &argument : arguments)
        page += entry(usage_of(argument), meaning_of(argument) + ".");
    return page;
}

std::string command_page(const Command &command)
{
    std::string page = ".SS " + escaped(synopsis_of(command).substr(sizeof "cmifctl [OPTIONS]")) +
                       "\n" + escaped(command.summary) + ".\n" + escaped(command.details) + "\n";
    return page + arguments_page(command.arguments);
}

} // namespace

std::string manual_page()
{
    std::string page = ".TH CMIFCTL 1 \"\" \"CMIF " CMIF_VERSION "\" \"CMIF\"\n"
                       ".SH NAME\ncmifctl \\- query and control a router's LTE modem\n"
                       ".SH SYNOPSIS\n.B cmifctl\n[OPTIONS] GROUP VERB [ARGS]\n"
                       ".SH DESCRIPTION\n"
                       "The output is aligned sections and tables; with\n.B \\-\\-json\n"
                       "it is always exactly one document. Notes, progress and errors go to "
                       "standard error.\n"
                       "PIN, PUK, password and control key are prompted for without echo, or "
                       "read from standard input with\n.BR \\- .\n"
                       ".SH OPTIONS\n" +
                       arguments_page(global_options()) + ".SH COMMANDS\n";
    for (const Command &command : commands())
        page += command_page(command);
    page += ".SH EXIT STATUS\n";
    for (const ExitMeaning &row : exit_meanings)
        page += entry(std::to_string(static_cast<int>(row.status)), std::string(row.meaning) + ".");
    return page + ".SH ENVIRONMENT\n" + entry("NO_COLOR", "No colour on a terminal.") +
           entry("COLUMNS", "The width of tables where standard output is not a terminal.") +
           entry("CMIF_TIMEOUT", "The seconds of --timeout where it isn't given.") +
           entry("CMIF_STORE", "The directory of the configuration store.");
}

} // namespace cmifctl
