#include "program.h"

#include "cli/help.h"
#include "cli/usage_error.h"
#include "client/signals.h"
#include "cmifctl/cli/command_line.h"
#include "cmifctl/output/json_text.h"
#include "cmifctl/output/terminal.h"
#include "presentation.h"
#include "watch.h"

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

// Help or version, which is a document too with --json.
void print_about(const CommandLine &line)
{
    const std::string text = line.help ? cli::help_text(tables(), line.path) : CMIF_VERSION;
    const Json program{{"name", "cmifctl"}, {"version", CMIF_VERSION}};
    const Json members = line.help ? Json{{"help", text}} : Json{{"program", program}};
    if (line.context.output.json())
        print(render_json(document(line.path, members)));
    else
        print(line.help ? text : "cmifctl " + text + "\n");
}

int run_line(const CommandLine &line)
{
    if (line.command == nullptr) {
        print_about(line);
        return 0;
    }
    if (line.context.output.watch)
        watch(line);
    Context context = line.context;
    run(line.path, context);
    clear_progress();
    print(rendered(context, line.path));
    return static_cast<int>(context.status);
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
    CommandLine line;
    OutputOptions output{.format = wants_json(count, words) ? Format::json : Format::human};
    try {
        line = parse(count, words);
        output = line.context.output;
        return run_line(line);
    } catch (const cli::UsageError &error) {
        print_failure(Failure(Exit::usage, error.what(), error.hint()), line.path, output);
        return static_cast<int>(Exit::usage);
    } catch (const Failure &failure) {
        print_failure(failure, line.path, output);
        return static_cast<int>(failure.status());
    } catch (const Interrupted &interrupted) {
        if (!output.watch) // its readings are complete
            print_failure(Failure(Exit::other, "interrupted", interrupted.consequence), line.path,
                          output);
        end_by(interrupted.signal);
    } catch (const std::exception &error) {
        print_failure(Failure(Exit::other, error.what()), line.path, output);
        return static_cast<int>(Exit::other);
    }
}

} // namespace

int program(int count, char **words)
{
    reserve_standard_fds();
    client::forbid_core_dumps();
    std::setlocale(LC_CTYPE, "C.UTF-8"); // for the widths of characters
    if (count == 1) {
        std::fputs(cli::short_help(tables()).c_str(), stderr);
        return static_cast<int>(Exit::usage);
    }
    try {
        return run_and_report_errors(count, words);
    } catch (const OutputError &output) {
        std::fprintf(stderr, "cmifctl: standard output can't be written: %s\n",
                     std::strerror(output.error));
        return static_cast<int>(Exit::other);
    }
}

} // namespace cmifctl
