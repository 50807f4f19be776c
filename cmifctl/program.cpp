#include "program.h"

#include "client/signals.h"
#include "cmifctl/cli/command_line.h"
#include "cmifctl/cli/help.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/terminal_text.h"
#include "cmifctl/output/text_report.h"

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace cmifctl
{
namespace
{

using client::Interrupted;

void print_report(const Context &context)
{
    print(context.json ? render_json(context.report.document())
                       : render_text(context.report, output_columns(), output_in_colour()));
}

void print_error(const Failure &failure, bool json)
{
    clear_progress();
    if (!json) {
        std::fprintf(stderr, "cmifctl: %s\n", escape_controls(failure.what()).c_str());
        if (!failure.hint().empty())
            std::fprintf(stderr, "  %s\n", escape_controls(failure.hint()).c_str());
        return;
    }
    Json error{{"code", static_cast<int>(failure.status())},
               {"name", name_of(failure.status())},
               {"message", failure.what()},
               {"hint", failure.hint().empty() ? Json() : Json(failure.hint())}};
    error.update(failure.details());
    print(render_json({{"error", error}}));
}

// Help or version, which is a document too with --json.
void print_about(const CommandLine &line)
{
    const std::string key = line.help ? "help" : "version";
    const std::string text = line.help ? help_text(line.path) : CMIF_VERSION;
    if (line.context.json)
        print(render_json({{key, text}}));
    else
        print(line.help ? text : "cmifctl " + text + "\n");
}

int run(int count, char **words)
{
    if (count == 1) {
        std::fputs(short_help().c_str(), stderr);
        return static_cast<int>(Exit::usage);
    }
    CommandLine line = parse(count, words);
    if (line.command == nullptr) {
        print_about(line);
        return 0;
    }
    line.command->run(line.context);
    clear_progress();
    print_report(line.context);
    return static_cast<int>(line.context.status);
}

// Ends by the signal that was held back, so that a shell sees it.
[[noreturn]] void end_by(int signal)
{
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    _exit(static_cast<int>(Exit::other));
}

// A pipe would take the number of a standard file that is closed. Opened for reading only, so that
// writing to it still fails.
void reserve_standard_fds()
{
    int fd = 0;
    while (fd != -1 && fd <= STDERR_FILENO)
        fd = open("/dev/null", O_RDONLY);
    if (fd != -1)
        close(fd);
}

int run_and_report_errors(int count, char **words)
{
    const bool json = wants_json(count, words);
    try {
        return run(count, words);
    } catch (const Failure &failure) {
        print_error(failure, json);
        return static_cast<int>(failure.status());
    } catch (const Interrupted &interrupted) {
        print_error(Failure(Exit::other, "interrupted", interrupted.consequence), json);
        end_by(interrupted.signal);
    } catch (const std::exception &error) {
        print_error(Failure(Exit::other, error.what()), json);
        return static_cast<int>(Exit::other);
    }
}

} // namespace

int program(int count, char **words)
{
    reserve_standard_fds();
    client::forbid_core_dumps();
    std::setlocale(LC_CTYPE, "C.UTF-8"); // for the widths of characters
    try {
        return run_and_report_errors(count, words);
    } catch (const OutputError &output) {
        std::fprintf(stderr, "cmifctl: standard output can't be written: %s\n",
                     std::strerror(output.error));
        return static_cast<int>(Exit::other);
    }
}

} // namespace cmifctl
