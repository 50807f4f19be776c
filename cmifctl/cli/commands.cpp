#include "commands.h"

#include "cmifctl/verbs/verbs.h"
#include "help.h"

#include <algorithm>

namespace cmifctl
{

namespace
{

using Kind = Argument::Kind;

const Argument secret_input{Kind::optional,
                            "source",
                            "-",
                            "read the secrets from standard input, a line each, instead of asking",
                            names::from_input,
                            true};
const Argument force{Kind::flag, "force", "", "try even when one try is left"};
const Argument yes{Kind::flag, "yes", "", "don't ask whether you are sure"};
const Argument show_secrets{Kind::flag, "show-secrets", "", "show passwords in clear"};

const Group all_groups[]{
    {"status", "everything at a glance"},
    {"sim", "the SIM card: PIN, PUK, network lock"},
    {"radio", "the modem's radio and its settings"},
    {"network", "operators: search, select, registration"},
    {"sms", "the stored short messages"},
    {"data", "the data connection and its profile"},
    {"log", "the debug log of the QMI calls"},
    {"config", "the configuration store"},
    {"completion", "completion for a shell"},
    {"manual", "the manual page"},
};

const Argument all_options[]{
    {Kind::flag, "json", "", "one JSON document on standard output, errors too"},
    {Kind::option, "timeout", "SECONDS", "wait so long for an answer (30; 0 for ever)"},
    {Kind::flag, "trace", "", "show the library's own lines on standard error"},
    {Kind::flag, "help", "", "show help"},
    {Kind::flag, "version", "", "show the version"},
};

const Command all_commands[]{
    {"status", "show everything that is known, whether the daemons run or not", status},

    {"sim status", "show the SIM's state and identity", sim_status},
    {"sim retries", "show the tries left for PIN and PUK", sim_retries},
    {"sim enter-pin",
     "unlock the SIM with its PIN",
     sim_enter_pin,
     {secret_input, force},
     "Shows the tries left before and after. Nothing is sent when one try is left, unless --force "
     "is given."},
    {"sim enter-puk",
     "unblock the SIM with its PUK and set a new PIN",
     sim_enter_puk,
     {secret_input, force},
     "Asks for the PUK, then for the new PIN."},
    {"sim change-pin",
     "change the PIN",
     sim_change_pin,
     {secret_input, force},
     "Asks for the PIN, then for the new one."},
    {"sim pin-mode",
     "show or set whether the SIM asks for its PIN",
     sim_pin_mode,
     {{Kind::optional, "mode", "MODE", "with or without PIN", names::on_off}, secret_input, force},
     "Setting it asks for the PIN."},
    {"sim lock-network",
     "bind the modem to the SIMs of one network",
     sim_lock_network,
     {{Kind::option, "network", "CODE", "MCC and MNC; without it the SIM's own"},
      {Kind::option, "facility", "NAME", "which lock (PN)"},
      secret_input},
     "Asks for the control key."},
    {"sim unlock-network",
     "let the modem work with any SIM again",
     sim_unlock_network,
     {secret_input},
     "Asks for the control key."},

    {"radio show", "show measurements and settings", radio_show},
    {"radio mode",
     "show or set the networks that are searched for",
     radio_mode,
     {{Kind::optional, "mode", "MODE", "which generations", names::settable_search_mode}}},
    {"radio band",
     "show or set the band region",
     radio_band,
     {{Kind::optional, "region", "REGION", "which region", names::settable_band_region}},
     "The same setting of the modem as the search mode, with names of its own."},
    {"radio roaming",
     "show or set international roaming",
     radio_roaming,
     {{Kind::optional, "roaming", "ROAMING", "whether to roam", names::roaming}}},
    {"radio domain",
     "show or set the packet-switched domain",
     radio_domain,
     {{Kind::optional, "domain", "STATE", "attached or not", names::on_off}}},
    {"radio functionality",
     "set the phone functionality",
     radio_functionality,
     {{Kind::required, "level", "LEVEL", "how much of the phone works", names::functionality}}},
    {"radio reset", "put the modem back to its factory settings", radio_reset, {yes}},
    {"radio timezone", "give the modem the system's time zone", radio_timezone},
    {"radio download-mode",
     "ask for the firmware-download mode through the AT daemon",
     radio_download_mode,
     {yes},
     "Waits for nobody. The modem is no phone afterwards."},

    {"network show", "show operator, cell and registration", network_show},
    {"network scan",
     "search for operators and list them",
     network_scan,
     {},
     "Takes up to minutes; waits 180 seconds unless --timeout says otherwise."},
    {"network scan-state", "show whether a search is going on", network_scan_state},
    {"network list", "list the operators of the last search", network_list},
    {"network select",
     "register with one operator",
     network_select,
     {{Kind::required, "code", "CODE", "MCC and MNC, 5 or 6 digits"},
      {Kind::option, "technology", "GENERATION", "access technology; any without it",
       names::generation}}},
    {"network auto", "let the modem choose the operator", network_auto},
    {"network format",
     "set the format of the operator's name",
     network_format,
     {{Kind::required, "format", "FORMAT", "how it is written", names::name_format}}},

    {"sms list", "list the messages", sms_list},
    {"sms show",
     "show one message whole",
     sms_show,
     {{Kind::required, "id", "ID", "its index, as the list shows it"}}},
    {"sms delete",
     "delete one message, or all",
     sms_delete,
     {{Kind::optional, "id", "ID", "its index, as the list shows it"},
      {Kind::flag, "all", "", "delete every message"},
      yes}},

    {"data status", "show the connection", data_status},
    {"data start", "connect, and wait until the connection is up", data_start},
    {"data stop", "disconnect, and wait until the connection is down", data_stop},
    {"data uptime", "show how long the connection has been up", data_uptime},
    {"data auto-connect",
     "show or set whether to connect at start",
     data_auto_connect,
     {{Kind::optional, "state", "STATE", "whether to connect", names::on_off}}},
    {"data profile show", "show the connection profile", profile_show, {show_secrets}},
    {"data profile set",
     "change parts of the connection profile",
     profile_set,
     {{Kind::option, "apn", "NAME", "access point name, at most 40 bytes"},
      {Kind::option, "user", "NAME", "user name, at most 128 bytes"},
      {Kind::option, "password", "SOURCE", "ask for it, or read it from standard input",
       names::password_source, true},
      {Kind::option, "auth", "TYPE", "authentication", names::authentication},
      {Kind::option, "pdp", "TYPE", "PDP type", names::profile_pdp},
      {Kind::option, "family", "FAMILY", "IP family", names::ip_family},
      {Kind::flag, "auto-apn", "", "as automatic APN selection does: the daemon may ignore it"},
      show_secrets},
     "What isn't given stays as it is."},
    {"data profile-sync", "bring the stored profile up to date with the modem's",
     data_profile_sync},
    {"data at-profile",
     "set a connection profile of the modem by number",
     data_at_profile,
     {{Kind::required, "id", "NUMBER", "profile number, 1 to 16"},
      {Kind::required, "type", "TYPE", "PDP type", names::pdp_type},
      {Kind::required, "apn", "NAME", "access point name, at most 29 bytes"}}},
    {"data ota-dm", "start an over-the-air device-management session", data_ota_dm},
    {"data download-mode",
     "ask for the firmware-download mode through the QMI daemon",
     data_download_mode,
     {yes},
     "Waits for nobody. The modem is no phone afterwards."},

    {"log show",
     "show the debug log",
     log_show,
     {{Kind::option, "generation", "N", "0 the current one, 1 and 2 the older ones"},
      {Kind::option, "lines", "N", "the last lines only"}}},
    {"log follow", "show the debug log as it grows", log_follow},
    {"log mark",
     "write a line of your own into the debug log",
     log_mark,
     {{Kind::required, "text", "TEXT", "at most 100 bytes"}}},
    {"log rotate", "start a new log and keep two older ones", log_rotate},
    {"log enable", "switch the debug log on", log_enable},
    {"log disable", "switch the debug log off", log_disable},

    {"config get",
     "show a setting",
     config_get,
     {{Kind::required, "key", "KEY", "its name"}, show_secrets}},
    {"config set",
     "change a setting until the next restart",
     config_set,
     {{Kind::required, "key", "KEY", "its name"},
      {Kind::optional, "value", "VALUE", "its value; - reads it from standard input", {}, true},
      show_secrets},
     "Without a value asks for it, without echo."},
    {"config list",
     "list the settings",
     config_list,
     {{Kind::optional, "prefix", "PREFIX", "only those whose names begin so"}, show_secrets}},
    {"config save", "keep the settings over a restart", config_save},

    {"completion",
     "print a completion script",
     print_completion,
     {{Kind::required, "shell", "SHELL", "for which shell", names::shells}}},
    {"manual", "print the manual page, for man -l -", print_manual},
};

} // namespace

std::span<const Group> groups()
{
    return all_groups;
}

std::span<const Command> commands()
{
    return all_commands;
}

std::span<const Argument> global_options()
{
    return all_options;
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

std::vector<std::string> words_after(std::string_view path)
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
