#include "run.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace
{

using cmif_sim::ServerOptions;

constexpr int max_pace = 1000;

constexpr const char *examples = R"(Examples:
  cmif-sim run                                a shell beside a simulated router
  cmif-sim run -- cmifctl status              one program; the exit status is the program's
  cmif-sim run --verbose --seed 7 -- ./test   prints records; repeats the same signal values
  cmif-sim serve                              serves the message queues of this system)";

constexpr const char *run_notes =
    R"(The program has its own message queues, processes, /tmp and /data, and sees the rest of the file
system as it is. Under /tmp and /data only the directories of the current directory, of cmif-sim and
of CMIF_STORE stay visible. CMIF_STORE names a directory that keeps the configuration; without it,
each run starts with an empty one. Where the system refuses namespaces, or with CMIF_SANDBOX=none,
runs share the queues of this system, one run at a time.
Exit status: the program's; 1 the router did not start, 2 usage error, 126 the program cannot be run,
127 no such program.)";

// The parser does not see the program to run, which follows "--".
class RunHelp : public CLI::Formatter
{
public:
    std::string make_usage(const CLI::App *, std::string) const override
    {
        return "Usage: cmif-sim run [OPTIONS] [-- PROGRAM [ARGUMENT...]]\n";
    }
};

// The limit keeps the longest scaled delay, of minutes, far below an overflow.
double pace_of(const std::string &text)
{
    double factor = -1;
    const char *const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, factor);
    const bool in_range = factor >= 0 && factor <= max_pace; // false for NaN
    if (parsed.ec != std::errc() || parsed.ptr != end || !in_range)
        throw CLI::ValidationError("--pace", "'" + text + "' is not a number from 0 to " +
                                                 std::to_string(max_pace));
    return factor;
}

void add_options(CLI::App &command, ServerOptions &options)
{
    command.add_flag("--verbose", options.verbose, "Print each record, decoded, to standard error");
    command.add_option("--seed", options.seed, "Number that determines the modem's signal values")
        ->type_name("N")
        ->capture_default_str();
    command
        .add_option_function<std::string>(
            "--pace", [&options](const std::string &text) { options.pace = pace_of(text); },
            "Factor on the modem's delays, 0 to " + std::to_string(max_pace) +
                ": 0.1 is ten times faster, 0 no delay")
        ->type_name("FACTOR")
        ->default_str("1");
    command.add_flag_callback(
        "--no-at", [&options] { options.at = false; }, "Leave out the AT daemon");
    command
        .add_flag_callback(
            "--no-qmi", [&options] { options.qmi = false; }, "Leave out the QMI daemon")
        ->excludes("--no-at");
}

// Removes the first "--" and the words after it: they are the program's, even if they look like
// options of cmif-sim.
std::vector<std::string> split_off_command(int &argc, char **argv)
{
    char **end = argv + argc;
    char **mark =
        std::find_if(argv, end, [](const char *word) { return std::string_view(word) == "--"; });
    argc = static_cast<int>(mark - argv);
    return mark == end ? std::vector<std::string>{} : std::vector<std::string>(mark + 1, end);
}

int run_command_line(int argc, char **argv)
{
    ServerOptions options;
    CLI::App app{"A router in a box: a simulated LTE modem with the daemons that CMIF talks to.",
                 "cmif-sim"};
    app.set_version_flag("--version", "cmif-sim " CMIF_VERSION, "Print the version and exit");
    app.require_subcommand(1);
    app.footer(examples);

    CLI::App *run = app.add_subcommand("run", "Run a program, or a shell, beside a new router");
    run->formatter(std::make_shared<RunHelp>());
    run->footer(run_notes);
    add_options(*run, options);
    CLI::App *serve = app.add_subcommand("serve", "Serve this system's queues until stopped");
    serve->footer("Stops on SIGTERM and SIGINT. Refuses to start while another router serves.");
    add_options(*serve, options);

    const std::vector<std::string> command = split_off_command(argc, argv);
    try {
        app.parse(argc, argv);
        if (*serve && !command.empty())
            throw CLI::ExtrasError("serve", {command});
    } catch (const CLI::ParseError &error) {
        constexpr int usage_error = 2;
        return app.exit(error) == 0 ? 0 : usage_error;
    }
    return *run ? cmif_sim::run(options, command) : cmif_sim::serve(options, -1);
}

} // namespace

int main(int argc, char **argv)
try {
    return run_command_line(argc, argv);
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmif-sim: %s\n", error.what());
    return 1;
}
