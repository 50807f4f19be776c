#include "command_line.h"

#include "cli/about.h"
#include "cli/option_error.h"
#include "cmif-record/start.h"
#include "cmif-sim/control/box_sockets.h"
#include "cmif-sim/router/simulation.h"
#include "cmif-sim/usb/computer.h"
#include "scenario/script.h"

#include <charconv>
#include <limits>

namespace cmif_sim
{
namespace
{

using cli::Argument;
using enum cli::Argument::Kind;
using enum cli::Access;

std::vector<cli::Candidate> known_boxes()
{
    std::vector<cli::Candidate> known;
    for (const pid_t box : find_boxes())
        known.push_back({std::to_string(box), "a running router"});
    return known;
}

// What may follow these words of a command, of a router or of a modem: which of them runs is not
// looked at.
std::vector<cli::Candidate> known_commands(const std::vector<std::string> &before)
{
    std::string line;
    for (const std::string &word : before)
        line += word + " ";
    ServerOptions everything;
    everything.further_commands = usb_options({}).further_commands;
    std::vector<cli::Candidate> known;
    for (const scenario::Words::Offer &offer : what_may_follow(line, everything))
        known.push_back({offer.text, offer.description});
    return known;
}

// clang-format off

constexpr int manual_clock = 1;
constexpr cli::Choice clocks[] = {
    {0, "real",   "", "the machine's time, times the pace"},
    {manual_clock, "manual", "", "time stops until cmif-sim ctl advance DURATION"},
};
constexpr cli::Choice states[] = {
    {0, "locked", "", "the SIM asks for its PIN"},
    {1, "unlocked", "", "the PIN was entered"},
    {2, "registered", "", "in the network"},
    {3, "connected", "", "with a data connection"},
};

constexpr Argument command {rest,   "command", "PROGRAM [ARGUMENT...]", "the program to run; default: a shell"};
constexpr Argument verbose {flag,   "verbose", "",       "print each record, decoded, on standard error"};
constexpr Argument seed    {option, "seed",    "N",      "number that determines the modem's signal values (default 1)"};
constexpr Argument pace    {option, "pace",    "FACTOR", "factor on the modem's delays, 0 to 1000: 0.1 is ten times faster, 0 no delay (default 1)"};
constexpr Argument no_at   {flag,   "no-at",   "",       "leave out the AT daemon"};
constexpr Argument no_qmi  {flag,   "no-qmi",  "",       "leave out the QMI daemon"};

constexpr Argument no_both {flag,   "no-daemons", "",    "run the modem and the store alone"};
constexpr Argument script  {option, "scenario", "FILE",  "commands, with the moments when they are carried out"};
constexpr Argument clock_  {option, "clock",    "CLOCK", "what time the simulation runs by", clocks};
constexpr Argument state   {option, "state",    "STATE", "bring the modem there before the start", states};
constexpr Argument box     {option, "box",     "PID",    "which router, by the process number that status shows (default: the only one)", {}, {.known_values = known_boxes}};
constexpr Argument json    {flag,   "json",    "",       "as a JSON document, for programs"};
constexpr Argument line    {optional, "line",  "WORD...", "a command; without one, commands are read from standard input, one on each line", {}, {.repeats = true, .known_after = known_commands}};
constexpr Argument record  {option, "record",  "FILE",   "write what the daemons exchange and set, one line of JSON each"};
constexpr Argument secrets {flag,   "with-secrets", "",  "keep secrets and identities in the recording as they are"};
constexpr Argument recording{required, "recording", "FILE", "what cmif-record or --record has written"};

constexpr Argument log_all {flag,   "verbose", "",       "have ModemManager log all that it exchanges with the modem"};

constexpr Argument run_arguments[]   = {verbose, seed, pace, state, script, clock_, no_at, no_qmi, no_both, record, secrets, command};
constexpr Argument serve_arguments[] = {verbose, seed, pace, state, script, clock_, no_at, no_qmi, no_both, record, secrets};
constexpr Argument modem_arguments[] = {seed, pace, state, script, clock_};
constexpr Argument usb_arguments[]   = {log_all, seed, pace, state, script, clock_, command};
constexpr Argument ctl_arguments[]   = {box, line};
constexpr Argument status_arguments[] = {box, json};
constexpr Argument enter_arguments[] = {box, command};
constexpr Argument replay_pace{option, "pace",    "FACTOR", "factor on the recorded delays, 0 to 1000: 0.1 is ten times faster, 0 no delay (default 1)"};
constexpr Argument replay_arguments[] = {recording, replay_pace, command};

constexpr const char *run_details =
    "The program has its own message queues, processes, /tmp and /data, and sees the rest of the file system as it is. "
    "Under /tmp and /data only the directories of the current directory, of cmif-sim and of CMIF_STORE stay visible. "
    "Where the system refuses namespaces, runs share the queues of this system, one run at a time. "
    "The exit status is the program's.";
constexpr const char *serve_details =
    "Stops on SIGTERM and SIGINT. Refuses to start while another router serves.";

constexpr const char *ctl_details =
    "A line that is wrong is reported with its place and with what is allowed there, and then none is carried out. "
    "The exit status is 1 if a command fails, and 2 if a line is wrong.";
constexpr const char *enter_details =
    "The program has the message queues, processes, /tmp, /data and store of that router, and ends with it.";
constexpr const char *at_modem_details =
    "Prints the names of its two ports, pseudo-terminals, one on each line, and serves them until stopped by SIGTERM or SIGINT. "
    "They speak the AT commands of 3GPP TS 27.007 and 27.005, messages as PDUs or text.";
constexpr const char *usb_details =
    "This computer's ModemManager runs in the box, on a D-Bus of its own, and finds a USB modem with two AT ports and a network interface; a third AT port, /dev/ttyACM2, is left to other programs. "
    "The program starts when ModemManager shows the modem. It has its own network, in which 192.0.2.1 answers while there is a connection, and what a program of run has. "
    "Where the system refuses namespaces, the modem has no network interface and can't be unplugged. "
    "ModemManager's log is /tmp/cmif-sim-usb/ModemManager.log in the box. The exit status is the program's.";
constexpr const char *replay_details =
    "A request gets the next recorded reply for its code and fields, after the recorded delay, and what the daemons set before that reply is set before it. "
    "A request that was not recorded is answered with not_supported, and named on standard error.";

constexpr cli::Command commands[] = {
    //path         summary                                           access example               arguments
    {"run",        "run a program, or a shell, beside a new router", acts,  "-- cmifctl status",  run_arguments,   run_details},
    {"serve",      "serve this system's queues until stopped",       acts,  "--pace 0.1",         serve_arguments, serve_details},
    {"ctl",        "give a running router commands",                 acts,  "fault at 12 delay 5s", ctl_arguments, ctl_details},
    {"status",     "show what a running router does",                reads, "",                   status_arguments},
    {"enter",      "run a program, or a shell, beside a running router", acts, "-- cmifctl status", enter_arguments, enter_details},
    {"replay",     "run a program, or a shell, beside daemons that answer as recorded", acts, "trouble.jsonl -- cmifctl status", replay_arguments, replay_details},
    {"at-modem",   "serve AT ports of a simulated modem until stopped", acts, "--state registered", modem_arguments, at_modem_details},
    {"usb",        "run a program, or a shell, beside ModemManager with a simulated USB modem", acts, "-- mmcli -m any", usb_arguments, usb_details},
    cli::completion_command,
    cli::manual_command,
    cli::complete_command,
};

constexpr cli::Term examples[] = {
    {"cmif-sim run",                              "start a shell beside a simulated router"},
    {"cmif-sim run -- cmifctl status",            "run one program; the exit status is the program's"},
    {"cmif-sim run --verbose --seed 7 -- ./test", "print records; repeat the same signal values"},
    {"cmif-sim ctl fault at 12 drop",             "have the AT daemon not answer the next PIN"},
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
    {"/tmp/cmif-sim-UID/",     "a socket for each running router of this user, by process number"},
};

constexpr cli::Program program {
    .name        = "cmif-sim",
    .version     = CMIF_VERSION,
    .summary     = "a router in a box",
    .description = "Simulates an LTE modem, with its SIM card, its network and its messages, and runs the two "
                   "connection-manager daemons over it.",
    .groups      = {},
    .commands    = commands,
    .options     = cli::about_options,
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
        throw cli::UsageError("invalid --pace '" + text + "'", "A number from 0 to 1000.");
    return factor;
}

// By the manual clock a recording has the simulation's time, and is the same each time.
std::shared_ptr<cmif_record::Recording> recording_of(const cli::Arguments &given,
                                                     const ServerOptions &chosen)
{
    cmif_record::RecordingOptions form{given.has("with-secrets")};
    if (chosen.manual_clock)
        form.repeatable = chosen.seed;
    auto started =
        cmif_record::open_recording(cmif_record::start_recording(given.text("record"), form));
    if (chosen.manual_clock)
        started->set_time(0);
    return started;
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
    const bool none = given.has("no-daemons");
    chosen.at = !none && !given.has("no-at");
    chosen.qmi = !none && !given.has("no-qmi");
    if (!none && !chosen.at && !chosen.qmi)
        cli::fail_exclusive("--no-at", "--no-qmi");
    if (given.has("seed"))
        chosen.seed = static_cast<unsigned>(
            given.number("seed", "--seed", 0, std::numeric_limits<unsigned>::max()));
    if (given.has("pace"))
        chosen.pace = pace_of(given.text("pace"));
    chosen.manual_clock = given.has("clock") && given.code("clock", clocks) == manual_clock;
    if (chosen.manual_clock && given.has("pace"))
        cli::fail_exclusive("--pace", "--clock manual");
    if (given.has("state"))
        chosen.state =
            std::span(states)[static_cast<std::size_t>(given.code("state", states))].name;
    chosen.scenario_name = given.text("scenario");
    if (given.has("scenario"))
        chosen.scenario = scenario::read_script_file(chosen.scenario_name);
    if (given.has("record"))
        chosen.record = recording_of(given, chosen);
    else if (given.has("with-secrets"))
        throw cli::UsageError("--with-secrets needs --record");
    if (given.has("recording"))
        chosen.replay = std::make_shared<cmif_record::RecordingContents>(
            cmif_record::read_recording(given.text("recording")));
    return chosen;
}

std::optional<pid_t> chosen_box(const cli::Arguments &given)
{
    if (!given.has("box"))
        return std::nullopt;
    return static_cast<pid_t>(given.number("box", "--box", 1, std::numeric_limits<pid_t>::max()));
}

} // namespace cmif_sim
