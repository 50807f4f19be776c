// The arguments of each command, as rows of the command table refer to them.
#ifndef CMIFCTL_CLI_ARGUMENT_ROWS_H
#define CMIFCTL_CLI_ARGUMENT_ROWS_H

#include "cli/table.h"
#include "cmifctl/output/enums.h"
#include "cmifctl/verbs/known_values.h"

namespace cmifctl::arguments
{

using cli::Argument;
using enum Argument::Kind;

// clang-format off

// Shared by several commands.
//                                kind      name            value     help                        choices, traits
constexpr Argument secret_input  {optional, "source",       "-",      "read the secrets from standard input, one line each, instead of asking",
                                                                                                enums::from_input, {.secret = true}};
constexpr Argument force         {flag,     "force",        "",       "send it even with one attempt left, with unknown attempts, or to a SIM that asks for none"};
constexpr Argument yes           {flag,     "yes",          "",       "don't ask for confirmation"};
constexpr Argument no_wait       {flag,     "no-wait",      "",       "return when the daemon has accepted the request"};
constexpr Argument show_secrets  {flag,     "show-secrets", "",       "show passwords in clear"};
constexpr Argument message_id    {required, "id",           "ID",     "its index in the list",    {}, {.known_values = known_messages}};
constexpr Argument key           {required, "key",          "KEY",    "its name",                 {}, {.known_values = known_settings}};

constexpr Argument global[] = {
    {option, "output",  "FORMAT",  "how the result is written",   enums::output_formats, {.letter = 'o'}},
    {flag,   "json",    "",        "short for --output json: one document, also for errors"},
    {option, "color",   "WHEN",    "when to use colour",          enums::colours},
    {option, "timeout", "SECONDS", "how long to wait for an answer (default 30; 0 = no limit)"},
    {flag,   "trace",   "",        "show the library's trace lines on standard error"},
    cli::help_option,
    cli::version_option,
};
// What only reads can be repeated, and its document looked at before anything depends on it.
constexpr Argument of_readings[] = {
    {option, "field",   "PATH",    "only this value of the document, alone on its line; can be repeated",
                                                                  {}, {.repeats = true}},
    {flag,   "watch",   "SECONDS", "read again every 2 seconds, or as often as given, until interrupted"},
};

constexpr Argument secret[]        = {secret_input};
constexpr Argument attempt[]       = {secret_input, force};
constexpr Argument confirmed[]     = {yes};
constexpr Argument shown_secrets[] = {show_secrets};

constexpr Argument pin_mode[] = {
    {optional, "mode",       "MODE",       "ask for the PIN or not",                           enums::on_off},
    secret_input,
    force,
};
constexpr Argument lock_network[] = {
    {option,   "network",    "CODE",       "MCC and MNC; default: the SIM's own network",      {}, {.known_values = known_operators}},
    {option,   "facility",   "NAME",       "which lock (default PN)"},
    secret_input,
};

constexpr Argument search_mode[] = {
    {optional, "mode",       "MODE",       "which generations to search for",                  enums::search_mode},
};
constexpr Argument band_region[] = {
    {optional, "region",     "REGION",     "which region",                                     enums::band_region},
};
constexpr Argument roaming[] = {
    {optional, "roaming",    "ROAMING",    "whether to roam",                                  enums::roaming},
};
constexpr Argument domain[] = {
    {optional, "domain",     "STATE",      "whether to use packet data",                       enums::packet_service},
};
constexpr Argument functionality[] = {
    {required, "level",      "LEVEL",      "functionality level (AT+CFUN)",                    enums::functionality},
};

constexpr Argument select_operator[] = {
    {required, "code",       "CODE",       "MCC and MNC, 5 or 6 digits",                       {}, {.known_values = known_operators}},
    {option,   "technology", "GENERATION", "access technology (default: any)",                 enums::selectable_technology},
    no_wait,
};
constexpr Argument name_format[] = {
    {required, "format",     "FORMAT",     "how the name is written",                          enums::name_format},
};

constexpr Argument one_message[] = {message_id};
constexpr Argument delete_messages[] = {
    {optional, "id",         "ID",         "its index in the list",                            {}, {.known_values = known_messages}},
    {flag,     "all",        "",           "delete every message"},
    yes,
};

constexpr Argument start[]         = {no_wait};
constexpr Argument auto_connect[] = {
    {optional, "state",      "STATE",      "whether to connect",                               enums::on_off},
};
constexpr Argument set_profile[] = {
    {option,   "apn",        "NAME",       "access point name, at most 40 bytes"},
    {option,   "user",       "NAME",       "user name, at most 128 bytes"},
    {option,   "password",   "SOURCE",     "ask for it, or read it from standard input",       enums::password_source, {.secret = true}},
    {option,   "auth",       "TYPE",       "authentication",                                   enums::authentication},
    {option,   "pdp",        "TYPE",       "PDP type",                                         enums::pdp_type},
    {option,   "family",     "FAMILY",     "IP family",                                        enums::ip_family},
    {flag,     "auto-apn",   "",           "send it as automatic APN selection, which the daemon may ignore"},
    show_secrets,
};
constexpr Argument at_profile[] = {
    {required, "id",         "NUMBER",     "profile number, 1 to 16"},
    {required, "type",       "TYPE",       "PDP type",                                         enums::pdp_type},
    {required, "apn",        "NAME",       "access point name, at most 29 bytes"},
};

constexpr Argument log_part[] = {
    {option,   "generation", "N",          "0 for the current log, 1 and 2 for the older ones"},
    {option,   "lines",      "N",          "the last lines only"},
};
constexpr Argument log_text[] = {
    {required, "text",       "TEXT",       "at most 100 bytes, printable characters only"},
};

constexpr Argument one_setting[] = {key, show_secrets};
constexpr Argument change_setting[] = {
    key,
    {optional, "value",      "VALUE",      "its value; - reads it from standard input",        {}, {.secret = true}},
    show_secrets,
};
constexpr Argument list_settings[] = {
    {optional, "prefix",     "PREFIX",     "only the settings whose names begin with it",      {}, {.known_values = known_settings}},
    show_secrets,
};

constexpr Argument doctor[] = {
    {flag,     "fix",        "",           "remove what no process waits for: stale replies, left-over markers"},
};

// clang-format on

} // namespace cmifctl::arguments

#endif
