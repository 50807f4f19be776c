#include "manual.h"

#include "argument_text.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <ctime>

namespace cli
{
namespace
{

// Text escaped for troff; a line must not begin with a control character.
std::string escaped(std::string_view text)
{
    std::string out;
    for (const char letter : text) {
        if (letter == '\\')
            out += "\\e";
        else if (letter == '-')
            out += "\\-";
        else if (letter == '\'')
            out += "\\(aq";
        else
            out += letter;
    }
    return out.starts_with('.') ? "\\&" + out : out;
}

// Each sentence on a line of its own, as troff wants it for the space between them.
std::string sentences(std::string_view text)
{
    std::string out = escaped(text);
    for (std::size_t end = out.find(". "); end != std::string::npos; end = out.find(". ", end))
        out[end + 1] = '\n';
    return out.empty() ? "" : out + "\n";
}

std::string quoted(const std::string &text)
{
    return "\"" + escaped(text) + "\"";
}

std::string entry(const std::string &term, const std::string &text)
{
    return ".TP\n.B " + quoted(term) + "\n" + sentences(sentence(text));
}

std::string arguments_page(ArgumentRows arguments)
{
    std::string page;
    for (const Argument &argument : arguments)
        page += entry(usage_of(argument), meaning_of(argument));
    return page;
}

std::string terms_page(const char *title, std::span<const Term> terms)
{
    std::string page = std::string(".SH ") + title + "\n";
    for (const Term &term : terms)
        page += entry(term.name, term.meaning);
    return page;
}

std::string example_text(const std::string &example)
{
    return ".PP\n.RS 4\n.EX\n" + escaped(example) + "\n.EE\n.RE\n";
}

std::string command_page(const Program &program, const Command &command)
{
    return ".SS " + quoted(usage_of(command)) + "\n" + sentences(sentence(command.summary)) +
           sentences(command.details) + arguments_page(command.arguments) + ".PP\nExample:\n" +
           example_text(example_of(program, command));
}

std::string examples_page(const Program &program)
{
    std::string page;
    for (const Term &example : program.examples)
        page += (page.empty() ? ".SH EXAMPLES\n" : ".PP\n") + sentences(sentence(example.meaning)) +
                example_text(example.name);
    return page;
}

std::string upper_case(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

// Today, or the day of SOURCE_DATE_EPOCH, so that a package can be built again with equal bytes.
std::string date()
{
    const char *epoch = std::getenv("SOURCE_DATE_EPOCH");
    const std::time_t time = epoch ? std::atoll(epoch) : std::time(nullptr);
    std::tm day{};
    gmtime_r(&time, &day);
    char text[32] = "";
    std::strftime(text, sizeof text, "%Y-%m-%d", &day);
    return text;
}

std::string opening(const Program &program)
{
    const std::string name = program.name;
    return ".TH " + upper_case(name) + " 1 \"" + date() + "\" \"CMIF " + program.version +
           "\" \"CMIF\"\n" + ".SH NAME\n" + escaped(name) + " \\- " + escaped(program.summary) +
           "\n" + ".SH SYNOPSIS\n.B " + escaped(name) + "\n" +
           escaped(synopsis_of(program, "").substr(name.size() + 1)) + "\n" + ".SH DESCRIPTION\n" +
           sentences(program.description);
}

} // namespace

std::string manual_page(const Program &program)
{
    std::string page = opening(program) + ".SH OPTIONS\n" + arguments_page(program.options);
    if (!program.reading_options.empty())
        page += ".SS \"Of commands that only read\"\n" + arguments_page(program.reading_options);
    page += ".SH COMMANDS\n";
    for (const Command &command : program.commands)
        page += command_page(program, command);
    return page + examples_page(program) + terms_page("EXIT STATUS", program.exit_status) +
           terms_page("ENVIRONMENT", program.environment) + terms_page("FILES", program.files) +
           ".SH SEE ALSO\n" + program.see_also + "\n";
}

} // namespace cli
