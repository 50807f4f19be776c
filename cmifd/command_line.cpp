#include "command_line.h"

#include "cli/about.h"
#include "cli/option_error.h"

namespace cmifd
{
namespace
{

using cli::Argument;
using enum cli::Argument::Kind;
using enum cli::Access;

// clang-format off

constexpr Argument serve_arguments[] = {
    {option, "device",  "SYSFS_PATH", "the modem at this place, as 'mmcli -m any' shows it under 'device'"},
    {flag,   "first",   "",           "the first modem that ModemManager finds"},
    {flag,   "apply-address", "",     "set the address, the routes and the MTU of a connection on its interface; they go at the end"},
    {option, "at-port", "DEV",        "a serial port of the modem that ModemManager leaves alone, for what it has no way to do"},
    {flag,   "probe",   "",           "print what this modem can do for each request, and end"},
    {flag,   "verbose", "",           "print each record and each D-Bus call on standard error, with secrets masked"},
};

constexpr const char *details =
    "Stops on SIGTERM and SIGINT. Refuses to start while another server serves the queues. "
    "A modem that is missing is waited for, and a PIN is sent only when a request brings it. "
    "A modem is enabled when its SIM is open, until a request switches it off.";

constexpr cli::Command commands[] = {
    //path         summary                                                access example     arguments
    {"",           "serve this system's queues over a modem",             acts,  "--first",  serve_arguments, details},
    cli::completion_command,
    cli::manual_command,
    cli::complete_command,
};

constexpr cli::Term examples[] = {
    {"cmifd --first",                              "serve over the only modem"},
    {"cmifd --first --probe",                      "see what it can do"},
    {"cmifd --device /sys/devices/platform/usb1/1-1 --at-port /dev/ttyUSB3", "serve over this modem, with a port for what ModemManager can't do"},
};

constexpr cli::Term exit_status[] = {
    {"0", "ended by a signal; of --probe: printed"},
    {"1", "another program serves the queues, D-Bus cannot be reached, or --probe finds no modem"},
    {"2", "usage error"},
};

constexpr cli::Term environment[] = {
    {"CMIF_STORE",              "the directory of the configuration store"},
    {"DBUS_SYSTEM_BUS_ADDRESS", "the bus on which ModemManager is, if it is not the system's"},
};

constexpr cli::Term files[] = {
    {"/tmp/cmif-sim-at.lock",  "held while the AT queues are served"},
    {"/tmp/cmif-sim-qmi.lock", "held while the QMI queues are served"},
};

constexpr cli::Program program {
    .name        = "cmifd",
    .version     = CMIF_VERSION,
    .summary     = "the connection-manager daemons over a real modem",
    .description = "Runs the two connection-manager daemons over any modem that ModemManager drives.",
    .groups      = {},
    .commands    = commands,
    .options     = cli::about_options,
    .examples    = examples,
    .exit_status = exit_status,
    .environment = environment,
    .files       = files,
    .see_also    = "cmif-sim(1), cmifctl(1), mmcli(1), ModemManager(8)",
};

// clang-format on

} // namespace

const cli::Program &tables()
{
    return program;
}

Options options_of(const cli::Arguments &given)
{
    if (given.has("device") && given.has("first"))
        cli::fail_exclusive("--device", "--first");
    if (!given.has("device") && !given.has("first"))
        throw cli::UsageError("no modem is given", "Give --device or --first; 'mmcli -L' lists the "
                                                   "modems that ModemManager has found.");
    Options chosen;
    chosen.modem.device = given.text("device");
    chosen.modem.apply_address = given.has("apply-address");
    chosen.modem.at_port = given.text("at-port");
    chosen.modem.verbose = given.has("verbose");
    chosen.probe = given.has("probe");
    return chosen;
}

} // namespace cmifd
