#include "command_line.h"

#include "cli/about.h"

namespace cmif_record
{
namespace
{

using cli::Argument;
using enum cli::Argument::Kind;
using enum cli::Access;

// clang-format off

constexpr Argument record_arguments[] = {
    {required, "file",         "FILE",                 "where to write; an existing file is overwritten"},
    {flag,     "with-secrets", "",                     "keep secrets and identities as they are"},
    {rest,     "command",      "DAEMON [ARGUMENT...]", "the program to record, with its children"},
};

constexpr const char *details =
    "Writes every record that DAEMON takes from the message queues of the two channels or puts there, decoded, and every value that it sets in the configuration store, "
    "one line of JSON each. PINs, keys, passwords, identities, numbers and message texts are replaced by other text of the same form. "
    "DAEMON takes the place of cmif-record: it has its process number, and the exit status is its own. "
    "A program that is linked statically, or runs with more rights than its caller, is not recorded.";

constexpr cli::Command commands[] = {
    //path         summary                                                access example                                  arguments
    {"",           "record what a connection-manager daemon exchanges",   acts,  "trouble.jsonl -- /usr/sbin/lte-daemon", record_arguments, details},
    cli::completion_command,
    cli::manual_command,
    cli::complete_command,
};

constexpr cli::Term examples[] = {
    {"cmif-record trouble.jsonl -- /usr/sbin/lte-daemon", "record a platform's daemon"},
    {"cmif-record run.jsonl -- cmif-sim serve",           "record the simulated router; cmif-sim run --record does the same"},
    {"cmif-sim replay trouble.jsonl -- cmifctl status",   "answer as recorded"},
};

constexpr cli::Term exit_status[] = {
    {"0",   "done; otherwise the daemon's own status"},
    {"1",   "FILE can't be written, or the library is missing"},
    {"2",   "usage error"},
    {"126", "the daemon cannot be run"},
    {"127", "no such program"},
};

constexpr cli::Term environment[] = {
    {"LD_PRELOAD", "libcmif-record.so is put in front of what is there, for the daemon and its children"},
};

constexpr cli::Term files[] = {
    {"libcmif-record.so", "the library that records, beside cmif-record or in the library directory of its installation"},
};

constexpr cli::Program program {
    .name        = "cmif-record",
    .version     = CMIF_VERSION,
    .summary     = "record what a connection-manager daemon exchanges",
    .description = "Runs a daemon and writes its message queue records and its changes to the configuration store to a file.",
    .groups      = {},
    .commands    = commands,
    .options     = cli::about_options,
    .examples    = examples,
    .exit_status = exit_status,
    .environment = environment,
    .files       = files,
    .see_also    = "cmif-sim(1), cmifctl(1)",
};

// clang-format on

} // namespace

const cli::Program &tables()
{
    return program;
}

} // namespace cmif_record
