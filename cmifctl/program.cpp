#include "program.h"

#include "cmifctl/cli/command_line.h"
#include "cmifctl/cli/help.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/text.h"
#include "cmifctl/output/text_report.h"

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>

namespace cmifctl
{
namespace
{

void print_report(const CommandLine &line)
{
    print(line.run.options.json ? printed(line.run.report.document())
                                : people(line.run.report, output_columns(), output_in_colour()));
}

void print_error(const Failure &failure, bool json)
{
    end_progress();
    if (!json) {
        std::fprintf(stderr, "cmifctl: %s\n", safe(failure.what()).c_str());
        if (!failure.hint().empty())
            std::fprintf(stderr, "  %s\n", safe(failure.hint()).c_str());
        return;
    }
    Json error{{"code", static_cast<int>(failure.status())},
               {"name", name_of(failure.status())},
               {"message", failure.what()},
               {"hint", failure.hint().empty() ? Json() : Json(failure.hint())}};
    error.update(failure.details());
    print(printed({{"error", error}}));
}

// Help and version, which a program gets as a document too.
void print_about(const CommandLine &line)
{
    const std::string key = line.help ? "help" : "version";
    const std::string text = line.help ? help_text(line.path) : CMIF_VERSION;
    if (line.run.options.json)
        print(printed({{key, text}}));
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
    line.command->run(line.run);
    end_progress();
    print_report(line);
    return 0;
}

// As if nobody had held the signal back, so that a shell sees what ended the tool.
[[noreturn]] void end_by(int signal)
{
    std::signal(signal, SIG_DFL);
    std::raise(signal);
    _exit(static_cast<int>(Exit::other));
}

// Standard files that are closed would be taken by the next pipe. Reading ends, so that writing
// still fails.
void hold_standard_files()
{
    int file = 0;
    while (file != -1 && file <= STDERR_FILENO)
        file = open("/dev/null", O_RDONLY);
    if (file != -1)
        close(file);
}

int run_to_the_end(int count, char **words)
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
    hold_standard_files();
    std::setlocale(LC_CTYPE, "C.UTF-8"); // widths of characters
    try {
        return run_to_the_end(count, words);
    } catch (const Unwritable &output) {
        std::fprintf(stderr, "cmifctl: standard output can't be written: %s\n",
                     std::strerror(output.error));
        return static_cast<int>(Exit::other);
    }
}

} // namespace cmifctl
