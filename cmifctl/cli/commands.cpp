#include "commands.h"

#include "argument_rows.h"
#include "cmifctl/verbs/verbs.h"
#include "help.h"

#include <algorithm>

namespace cmifctl
{
namespace
{

// clang-format off

constexpr Group all_groups[] = {
    {"status",     "show all readings"},
    {"doctor",     "find out what is wrong"},
    {"sim",        "the SIM card: PIN, PUK, network lock"},
    {"radio",      "the modem's radio and its settings"},
    {"network",    "operators: search, select, registration"},
    {"sms",        "the stored short messages"},
    {"data",       "the data connection and its profile"},
    {"log",        "the debug log of the QMI calls"},
    {"config",     "the configuration store"},
    {"completion", "completion for a shell"},
    {"manual",     "the manual page"},
};

constexpr const char *attempts_details =
    "Shows the attempts left before and after. With one attempt left nothing is sent without --force.";
constexpr const char *download_details =
    "Does not wait for a reply. The modem stops working until it is reflashed or power-cycled.";

using enum Access;

const Command all_commands[] = {
    //path                  summary                                                      access  verb                 arguments
    {"status",              "show all that is known, with or without the daemons",       reads,  status},

    {"doctor",              "say what is wrong and how to cure it",                      acts,   doctor,              arguments::doctor,
                            "Takes nothing away without --fix. The exit status is 1 when something is wrong."},

    {"sim status",          "show the SIM's state and identity",                         reads,  sim_status},
    {"sim retries",         "show the attempts left for PIN and PUK",                    reads,  sim_retries},
    {"sim enter-pin",       "unlock the SIM with its PIN",                               acts,   sim_enter_pin,       arguments::attempt,
                            attempts_details},
    {"sim enter-puk",       "unblock the SIM with its PUK and set a new PIN",            acts,   sim_enter_puk,       arguments::attempt,
                            "Asks for the PUK, then for the new PIN."},
    {"sim change-pin",      "change the PIN",                                            acts,   sim_change_pin,      arguments::attempt,
                            "Asks for the PIN, then for the new one."},
    {"sim pin-mode",        "show or set whether the SIM asks for its PIN",              either, sim_pin_mode,        arguments::pin_mode,
                            "Setting it asks for the PIN."},
    {"sim lock-network",    "lock the modem to the SIMs of one network",                 acts,   sim_lock_network,    arguments::lock_network,
                            "Asks for the control key."},
    {"sim unlock-network",  "let the modem work with any SIM again",                     acts,   sim_unlock_network,  arguments::secret,
                            "Asks for the control key."},

    {"radio show",          "show measurements and settings",                            reads,  radio_show},
    {"radio mode",          "show or set the generations to search for",                 either, radio_mode,          arguments::search_mode},
    {"radio band",          "show or set the band region",                               either, radio_band,          arguments::band_region,
                            "The same setting of the modem as the search mode, under other names."},
    {"radio roaming",       "show or set international roaming",                         either, radio_roaming,       arguments::roaming},
    {"radio domain",        "show or set the packet-switched domain",                    either, radio_domain,        arguments::domain},
    {"radio functionality", "set the functionality level",                               acts,   radio_functionality, arguments::functionality},
    {"radio reset",         "reset the modem to its factory settings",                   acts,   radio_reset,         arguments::confirmed},
    {"radio timezone",      "set the modem to the system's time zone",                   acts,   radio_timezone},
    {"radio download-mode", "request firmware-download mode through the AT daemon",      acts,   radio_download_mode, arguments::confirmed,
                            download_details},

    {"network show",        "show operator, cell and registration",                      reads,  network_show},
    {"network scan",        "search for operators and list them",                        reads,  network_scan,        {},
                            "May take minutes: waits 180 seconds unless --timeout is given."},
    {"network scan-state",  "show whether a search is running",                          reads,  network_scan_state},
    {"network list",        "list the operators of the last search",                     reads,  network_list},
    {"network select",      "register with one operator",                                acts,   network_select,      arguments::select_operator},
    {"network auto",        "let the modem choose the operator",                         acts,   network_auto},
    {"network format",      "set the format of the operator's name",                     acts,   network_format,      arguments::name_format},

    {"sms list",            "list the messages",                                         reads,  sms_list},
    {"sms show",            "show one message in full",                                  reads,  sms_show,            arguments::one_message},
    {"sms delete",          "delete one message, or all",                                acts,   sms_delete,          arguments::delete_messages},

    {"data status",         "show the connection",                                       reads,  data_status},
    {"data start",          "connect, and wait until the connection is up",              acts,   data_start},
    {"data stop",           "disconnect, and wait until the connection is down",         acts,   data_stop},
    {"data uptime",         "show how long the connection has been up",                  reads,  data_uptime},
    {"data auto-connect",   "show or set whether to connect at start",                   either, data_auto_connect,   arguments::auto_connect},
    {"data profile show",   "show the connection profile",                               reads,  profile_show,        arguments::shown_secrets},
    {"data profile set",    "change parts of the connection profile",                    acts,   profile_set,         arguments::set_profile,
                            "What isn't given stays as it is."},
    {"data profile-sync",   "update the stored profile from the modem",                  acts,   data_profile_sync},
    {"data at-profile",     "set a connection profile of the modem by number",           acts,   data_at_profile,     arguments::at_profile},
    {"data ota-dm",         "start an over-the-air device-management session",           acts,   data_ota_dm},
    {"data download-mode",  "request firmware-download mode through the QMI daemon",     acts,   data_download_mode,  arguments::confirmed,
                            download_details},

    {"log show",            "show the debug log",                                        reads,  log_show,            arguments::log_part},
    {"log follow",          "show the debug log as it grows",                            acts,   log_follow},
    {"log mark",            "write a line into the debug log",                           acts,   log_mark,            arguments::log_text},
    {"log rotate",          "start a new log and keep two older ones",                   acts,   log_rotate},
    {"log enable",          "switch the debug log on",                                   acts,   log_enable},
    {"log disable",         "switch the debug log off",                                  acts,   log_disable},

    {"config get",          "show a setting",                                            reads,  config_get,          arguments::one_setting},
    {"config set",          "change a setting until the next restart",                   acts,   config_set,          arguments::change_setting,
                            "Without a value, asks for it without echo."},
    {"config list",         "list the settings",                                         reads,  config_list,         arguments::list_settings},
    {"config save",         "make the settings persistent",                              acts,   config_save},

    {"completion",          "print a completion script",                                 acts,   print_completion,    arguments::shell},
    {"manual",              "print the manual page, for man -l -",                       acts,   print_manual},
};

// clang-format on

} // namespace

std::span<const Group> groups()
{
    return all_groups;
}

std::span<const Command> commands()
{
    return all_commands;
}

ArgumentRows global_options()
{
    return arguments::global;
}

bool only_reads(const Command &command, const Arguments &given)
{
    const bool changes = !command.arguments.empty() && given.has(command.arguments.front().name);
    return command.access == Access::reads || (command.access == Access::either && !changes);
}

bool takes_secrets(const Command &command)
{
    return std::any_of(command.arguments.begin(), command.arguments.end(),
                       [](const Argument &argument) { return argument.secret; });
}

const Command *find_command(std::string_view path)
{
    const auto all = commands();
    const auto found = std::find_if(
        all.begin(), all.end(), [path](const Command &command) { return path == command.path; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<std::string> subcommands_of(std::string_view path)
{
    const std::string start = path.empty() ? "" : std::string(path) + " ";
    std::vector<std::string> words;
    for (const Command &command : commands()) {
        const std::string_view whole = command.path;
        if (!whole.starts_with(start))
            continue;
        std::string word(whole.substr(start.size()));
        word.erase(std::min(word.find(' '), word.size()));
        if (words.empty() || words.back() != word)
            words.push_back(std::move(word));
    }
    return words;
}

} // namespace cmifctl
