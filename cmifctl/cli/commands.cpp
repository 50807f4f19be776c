#include "commands.h"

#include "argument_rows.h"
#include "cli/about.h"
#include "cmif/cmif.h"
#include "cmifctl/verbs/verbs.h"
#include "exit_meanings.h"
#include "generated.h"

#include <algorithm>

namespace cmifctl
{
namespace
{

// clang-format off

constexpr cli::Group groups[] = {
    {"sim",     "the SIM card, its PIN, PUK and network lock"},
    {"radio",   "the modem's radio and its settings"},
    {"network", "operators and the registration with one"},
    {"sms",     "the stored short messages"},
    {"data",    "the data connection and its profile"},
    {"log",     "the debug log of the QMI calls"},
    {"config",  "the configuration store"},
};

constexpr const char *attempts_details =
    "Shows the attempts left before and after. With one attempt left nothing is sent without --force.";
constexpr const char *download_details =
    "Does not wait for a reply. The modem stops working until it is reflashed or power-cycled.";

using enum cli::Access;

constexpr Verb verbs[] = {
    //verb                  path                    summary                                                       access   example                               arguments
    {status,               {"status",               "show all that is known, with or without the daemons",        reads,   ""}},
    {summary,              {"summary",              "show the library's summary of the modem",                    reads,   ""}},

    {doctor,               {"doctor",               "diagnose problems and suggest fixes",                        either,  "",                                   arguments::doctor,
                           "Removes nothing without --fix. The exit status is 1 when something is wrong."}},

    {sim_status,           {"sim status",           "show the SIM's state and identity",                          reads,   ""}},
    {sim_retries,          {"sim retries",          "show the attempts left for PIN and PUK",                     reads,   "--json"}},
    {sim_enter_pin,        {"sim enter-pin",        "unlock the SIM with its PIN",                                acts,    "",                                   arguments::attempt,
                           attempts_details}},
    {sim_enter_puk,        {"sim enter-puk",        "unblock the SIM with its PUK and set a new PIN",             acts,    "",                                   arguments::attempt,
                           "Asks for the PUK, then for the new PIN."}},
    {sim_change_pin,       {"sim change-pin",       "change the PIN",                                             acts,    "",                                   arguments::attempt,
                           "Asks for the PIN, then for the new one."}},
    {sim_pin_mode,         {"sim pin-mode",         "show or set whether the SIM asks for its PIN",               either,  "off",                                arguments::pin_mode,
                           "Setting it asks for the PIN."}},
    {sim_lock_network,     {"sim lock-network",     "lock the modem to the SIMs of one network",                  acts,    "--network 00101",                    arguments::lock_network,
                           "Asks for the control key."}},
    {sim_unlock_network,   {"sim unlock-network",   "let the modem work with any SIM again",                      acts,    "",                                   arguments::secret,
                           "Asks for the control key."}},

    {radio_show,           {"radio show",           "show measurements and settings",                             reads,   "--watch=1"}},
    {radio_mode,           {"radio mode",           "show or set the generations to search for",                  either,  "eutran",                             arguments::search_mode}},
    {radio_band,           {"radio band",           "show or set the band region",                                either,  "all",                                arguments::band_region,
                           "The same setting of the modem as the search mode, under other names."}},
    {radio_roaming,        {"radio roaming",        "show or set international roaming",                          either,  "off",                                arguments::roaming}},
    {radio_domain,         {"radio domain",         "show or set whether the modem attaches to packet data",      either,  "attached",                           arguments::domain}},
    {radio_functionality,  {"radio functionality",  "set the functionality level",                                acts,    "full",                               arguments::functionality}},
    {radio_reset,          {"radio reset",          "reset the modem to its factory settings",                    acts,    "",                                   arguments::confirmed,
                           "Deletes all messages, ends the data connection, and locks the SIM until its PIN is entered."}},
    {radio_timezone,       {"radio timezone",       "set the modem to the system's time zone",                    acts,    ""}},
    {radio_download_mode,  {"radio download-mode",  "request firmware-download mode through the AT daemon",       acts,    "",                                   arguments::confirmed,
                           download_details}},

    {network_show,         {"network show",         "show operator, cell and registration",                       reads,   "--field network.operator"}},
    {network_scan,         {"network scan",         "search for operators and list them",                         reads,   "--timeout 300",                      {},
                           "May take minutes: waits 180 seconds unless --timeout is given."}},
    {network_scan_state,   {"network scan-state",   "show whether a search is running",                           reads,   ""}},
    {network_list,         {"network list",         "list the operators of the last search",                      reads,   "--json"}},
    {network_select,       {"network select",       "register with one operator, and wait until it is done",      acts,    "00101 --technology eutran",          arguments::select_operator}},
    {network_auto,         {"network auto",         "let the modem choose the operator",                          acts,    ""}},
    {network_format,       {"network format",       "set the format of the operator's name",                      acts,    "numeric",                            arguments::name_format}},

    {sms_list,             {"sms list",             "list the messages",                                          reads,   ""}},
    {sms_show,             {"sms show",             "show one message in full",                                   reads,   "3",                                  arguments::one_message}},
    {sms_delete,           {"sms delete",           "delete one message, or all",                                 acts,    "3",                                  arguments::delete_messages}},

    {data_status,          {"data status",          "show the connection",                                        reads,   "--watch"}},
    {data_start,           {"data start",           "connect, and wait until the connection is up",               acts,    "--timeout 60",                       arguments::start}},
    {data_stop,            {"data stop",            "disconnect, and wait until the connection is down",          acts,    ""}},
    {data_uptime,          {"data uptime",          "show how long the connection has been up",                   reads,   ""}},
    {data_auto_connect,    {"data auto-connect",    "show or set whether to connect at start",                    either,  "on",                                 arguments::auto_connect}},
    {profile_show,         {"data profile show",    "show the connection profile",                                reads,   "--show-secrets",                     arguments::shown_secrets}},
    {profile_set,          {"data profile set",     "change parts of the connection profile",                     acts,    "--apn internet.example --auth none", arguments::set_profile,
                           "What isn't given stays as it is."}},
    {data_profile_sync,    {"data profile-sync",    "update the stored profile from the modem",                   acts,    ""}},
    {data_at_profile,      {"data at-profile",      "set a connection profile of the modem by number",            acts,    "1 IP internet.example",              arguments::at_profile}},
    {data_ota_dm,          {"data ota-dm",          "start an over-the-air device-management session",            acts,    ""}},
    {data_download_mode,   {"data download-mode",   "request firmware-download mode through the QMI daemon",      acts,    "",                                   arguments::confirmed,
                           download_details}},

    {log_show,             {"log show",             "show the debug log",                                         reads,   "--lines 20",                         arguments::log_part}},
    {log_follow,           {"log follow",           "show the debug log as it grows",                             acts,    ""}},
    {log_mark,             {"log mark",             "write a line into the debug log",                            acts,    "test-started",                       arguments::log_text}},
    {log_rotate,           {"log rotate",           "start a new log and keep two older ones",                    acts,    ""}},
    {log_enable,           {"log enable",           "switch the debug log on",                                    acts,    ""}},
    {log_disable,          {"log disable",          "switch the debug log off",                                   acts,    ""}},

    {config_get,           {"config get",           "show a setting",                                             reads,   "lte_sim_status",                     arguments::one_setting}},
    {config_set,           {"config set",           "change a setting until the next restart",                    acts,    "debug_at_cmif 1",                    arguments::change_setting,
                           "Without a value, asks for it without echo."}},
    {config_list,          {"config list",          "list the settings",                                          reads,   "debug_",                             arguments::list_settings}},
    {config_save,          {"config save",          "make the settings persistent",                               acts,    ""}},

    {print_completion,     cli::completion_command},
    {print_manual,         cli::manual_command},
    {print_candidates,     cli::complete_command},
};

constexpr cli::Term examples[] = {
    {"cmifctl status",                                                 "show all that is known"},
    {"cmifctl --field network.operator network show",                  "print one value, for a script"},
    {"cmifctl --json sms list | jq -r '.messages[].text'",             "print the texts of the messages"},
    {R"(printf '%s\n' "$pin" | cmifctl sim enter-pin -)",              "unlock the SIM in a script"},
    {"cmifctl --timeout 60 data start && cmifctl --watch data status", "connect, then watch the connection"},
    {"source <(cmifctl completion bash)",                              "complete command lines in this shell"},
};

constexpr cli::Term environment[] = {
    {"CMIF_TIMEOUT", "the seconds of --timeout where it isn't given"},
    {"CMIF_STORE",   "the directory of the configuration store"},
    {"NO_COLOR",     "no colour on a terminal, unless --color says so"},
    {"COLUMNS",      "the width of tables where standard output is not a terminal"},
};

constexpr cli::Term files[] = {
    {CMIF_PROVIDER_LIST_FILE, "the operators of the last search"},
    {CMIF_QMI_READY_FILE,     "exists while the QMI daemon serves"},
    {CMIF_PROFILE_BUSY_FILE,  "exists while a profile change is in progress"},
    {CMIF_LOG_FILE,           "the debug log, with two older ones beside it"},
};

constexpr const char *description =
    "Reads the modem, the SIM and the network, and requests changes from the connection-manager daemons. "
    "The output is aligned sections and tables; with --json it is always exactly one document. "
    "Notes, progress and errors go to standard error. "
    "PIN, PUK, password and control key are asked for without echo, or read from standard input with -. "
    "Ctrl-C and every other signal that ends a program, except SIGKILL, first withdraw a request that is still queued.";

// clang-format on

std::vector<cli::Command> commands_of_verbs()
{
    std::vector<cli::Command> commands;
    for (const Verb &verb : verbs)
        commands.push_back(verb.command);
    return commands;
}

} // namespace

const cli::Program &tables()
{
    static const std::vector<cli::Command> commands = commands_of_verbs();
    static const cli::Program program{
        .name = "cmifctl",
        .version = CMIF_VERSION,
        .summary = "query and control a router's LTE modem",
        .description = description,
        .groups = groups,
        .commands = commands,
        .options = arguments::global,
        .reading_options = arguments::of_readings,
        .examples = examples,
        .exit_status = exit_meanings,
        .environment = environment,
        .files = files,
        .see_also = "cmif-sim(1)",
    };
    return program;
}

void run(const std::string &path, Context &context)
{
    const Verb *found = std::find_if(std::begin(verbs), std::end(verbs), [&path](const Verb &verb) {
        return path == verb.command.path;
    });
    found->run(context);
}

} // namespace cmifctl
