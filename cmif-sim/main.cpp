#include "run.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace
{

constexpr const char *examples = R"(Examples:
  cmif-sim run                                a shell beside a simulated router
  cmif-sim run -- cmifctl status              one program, and its exit status
  cmif-sim run --verbose --seed 7 -- ./test   the same signal values each time, records shown
  cmif-sim serve                              over the message queues of this system)";

constexpr const char *run_notes =
    R"(The program sees message queues, processes, /tmp and /data of its own, and everything else as it
is; only the folders that hold the current directory and cmif-sim stay visible below /tmp and /data.
CMIF_STORE names a directory to keep the configuration in; without it, each run starts afresh.
Where the system refuses name spaces, runs share what is there, one after the other.
Exit status: the program's; 1 router not started, 2 usage, 127 no such program.)";

/* The program to run stands behind the "--", out of sight of the parser. */
class RunHelp : public CLI::Formatter
{
public:
    std::string make_usage(const CLI::App *, std::string) const override
    {
        return "Usage: cmif-sim run [OPTIONS] [-- PROGRAM [ARGUMENT...]]\n";
    }
};

void add_options(CLI::App &command, cmif_sim::ServerOptions &options)
{
    command.add_flag("--verbose", options.verbose, "Print each record, decoded, to standard error");
    command.add_option("--seed", options.seed, "Number that the modem's signal values follow from")
        ->type_name("N")
        ->capture_default_str();
    command
        .add_option("--pace", options.pace,
                    "Factor on the modem's waits: 0.1 is ten times faster, 0 none")
        ->type_name("FACTOR")
        ->capture_default_str()
        ->check([](const std::string &text) {
            double factor = 0;
            const bool fits = CLI::detail::lexical_cast(text, factor) && factor >= 0;
            return fits ? "" : "'" + text + "' is not a number of 0 or above";
        });
    command.add_flag_callback(
        "--no-at", [&options] { options.at = false; }, "Leave out the AT daemon");
    command
        .add_flag_callback(
            "--no-qmi", [&options] { options.qmi = false; }, "Leave out the QMI daemon")
        ->excludes("--no-at");
}

/* What follows the first "--" is none of our options, whatever it looks like. */
std::vector<std::string> split_off_command(int &argc, char **argv)
{
    char **end = argv + argc;
    char **mark =
        std::find_if(argv, end, [](const char *word) { return std::string_view(word) == "--"; });
    argc = static_cast<int>(mark - argv);
    return mark == end ? std::vector<std::string>{} : std::vector<std::string>(mark + 1, end);
}

} // namespace

int main(int argc, char **argv)
try {
    cmif_sim::ServerOptions options;
    CLI::App app{"A router in a box: a simulated LTE modem with the daemons that CMIF talks to.",
                 "cmif-sim"};
    app.set_version_flag("--version", "cmif-sim " CMIF_VERSION, "Print the version and exit");
    app.require_subcommand(1);
    app.footer(examples);

    CLI::App *run = app.add_subcommand("run", "Run a program, or a shell, beside a fresh router");
    run->formatter(std::make_shared<RunHelp>());
    run->footer(run_notes);
    add_options(*run, options);
    CLI::App *serve = app.add_subcommand("serve", "Be the router of this system until ended");
    serve->footer("Ends on SIGTERM and SIGINT. Refuses to start where a router serves already.");
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
} catch (const std::exception &failure) {
    std::fprintf(stderr, "cmif-sim: %s\n", failure.what());
    return 1;
}
