#include "command_line.h"

#include "cli/completion.h"
#include "cli/usage_error.h"

#include <charconv>
#include <limits>

namespace cmif_sim
{
namespace
{

using cli::Argument;
using enum cli::Argument::Kind;
using enum cli::Access;

// clang-format off

constexpr Argument command {rest,   "command", "PROGRAM [ARGUMENT...]", "the program to run; default: a shell"};
constexpr Argument verbose {flag,   "verbose", "",       "print each record, decoded, on standard error"};
constexpr Argument seed    {option, "seed",    "N",      "number that determines the modem's signal values (default 1)"};
constexpr Argument pace    {option, "pace",    "FACTOR", "factor on the modem's delays, 0 to 1000: 0.1 is ten times faster, 0 no delay (default 1)"};
constexpr Argument no_at   {flag,   "no-at",   "",       "leave out the AT daemon"};
constexpr Argument no_qmi  {flag,   "no-qmi",  "",       "leave out the QMI daemon"};

constexpr Argument run_arguments[]   = {verbose, seed, pace, no_at, no_qmi, command};
constexpr Argument serve_arguments[] = {verbose, seed, pace, no_at, no_qmi};
constexpr Argument options[]         = {cli::help_option, cli::version_option};

constexpr const char *run_details =
    "The program has its own message queues, processes, /tmp and /data, and sees the rest of the file system as it is. "
    "Under /tmp and /data only the directories of the current directory, of cmif-sim and of CMIF_STORE stay visible. "
    "Where the system refuses namespaces, runs share the queues of this system, one run at a time. "
    "The exit status is the program's.";
constexpr const char *serve_details =
    "Stops on SIGTERM and SIGINT. Refuses to start while another router serves.";

constexpr cli::Command commands[] = {
    //path         summary                                           access example               arguments
    {"run",        "run a program, or a shell, beside a new router", acts,  "-- cmifctl status",  run_arguments,   run_details},
    {"serve",      "serve this system's queues until stopped",       acts,  "--pace 0.1",         serve_arguments, serve_details},
    {"completion", "print a completion script",                      acts,  "bash",               cli::shell_arguments},
    {"manual",     "print the manual page, for man -l -",            acts,  ""},
    {"complete",   "list what may follow on a command line, for shells", acts, "-- run --s",      cli::complete_arguments},
};

constexpr cli::Term examples[] = {
    {"cmif-sim run",                              "start a shell beside a simulated router"},
    {"cmif-sim run -- cmifctl status",            "run one program; the exit status is the program's"},
    {"cmif-sim run --verbose --seed 7 -- ./test", "print records; repeat the same signal values"},
    {"cmif-sim serve",                            "serve the message queues of this system"},
};

constexpr cli::Term exit_status[] = {
    {"0",   "done; of run: the program's own status, 128 + N if signal N ended it"},
    {"1",   "the router did not start, or another failure, given in the message"},
    {"2",   "usage error"},
    {"126", "the program cannot be run"},
    {"127", "no such program"},
};

constexpr cli::Term environment[] = {
    {"CMIF_STORE",   "a directory that keeps the configuration; without it, each run starts with an empty one"},
    {"CMIF_SANDBOX", "with the value none, run uses no namespaces"},
    {"SHELL",        "the shell that run starts without a program"},
};

constexpr cli::Term files[] = {
    {"/tmp/cmif-sim-at.lock",  "held while the AT queues are served"},
    {"/tmp/cmif-sim-qmi.lock", "held while the QMI queues are served"},
    {"/tmp/cmif-sim-run.lock", "held by a run without namespaces"},
    {"/tmp/cmif-sim-run-UID",  "the mark of such a run; a killed one leaves it, and the next one cleans up"},
    {"/tmp/cmif-run-XXXXXX",   "the store of such a run; the next run removes that of a killed one"},
};

constexpr cli::Program program {
    .name        = "cmif-sim",
    .version     = CMIF_VERSION,
    .summary     = "a router in a box",
    .description = "Simulates an LTE modem, with its SIM card, its network and its messages, and runs the two "
                   "connection-manager daemons over it.",
    .groups      = {},
    .commands    = commands,
    .options     = options,
    .examples    = examples,
    .exit_status = exit_status,
    .environment = environment,
    .files       = files,
    .see_also    = "cmifctl(1)",
};

// clang-format on

// The limit keeps the longest scaled delay, of minutes, far below an overflow.
double pace_of(const std::string &text)
{
    constexpr double max_pace = 1000;
    double factor = -1;
    const char *const end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, factor);
    const bool in_range = factor >= 0 && factor <= max_pace; // false for NaN
    if (parsed.ec != std::errc() || parsed.ptr != end || !in_range)
        throw cli::UsageError("--pace takes a number from 0 to 1000, not '" + text + "'");
    return factor;
}

} // namespace

const cli::Program &tables()
{
    return program;
}

ServerOptions server_options(const cli::Arguments &given)
{
    ServerOptions chosen;
    chosen.verbose = given.has("verbose");
    chosen.at = !given.has("no-at");
    chosen.qmi = !given.has("no-qmi");
    if (!chosen.at && !chosen.qmi)
        cli::fail_exclusive("--no-at", "--no-qmi");
    if (given.has("seed"))
        chosen.seed = static_cast<unsigned>(
            given.number("seed", "--seed", 0, std::numeric_limits<unsigned>::max()));
    if (given.has("pace"))
        chosen.pace = pace_of(given.text("pace"));
    return chosen;
}

} // namespace cmif_sim
