#include "checks.h"

#include "cmif/cmif.h"
#include "cmifctl/verbs/connection_reason.h"

namespace cmifctl
{
namespace
{

using namespace checks;

constexpr const char *start_daemon = "Start it, or restart it.";
constexpr const char *fix_takes = "'cmifctl doctor --fix' removes them.";

// clang-format off
constexpr Check rows[] = {
    //name                    severity   find                  hint
    {"queue_missing",          "error",   missing_queues,       "Start the daemon: it creates its queues."},
    {"queue_permissions",      "error",   queue_permissions,    "Remove it with 'ipcrm -Q %' as its owner and restart the daemon, which creates it for all users (mode 0666)."},
    {"locks_unusable",         "error",   unusable_locks,       "As their owner or root, remove them: ipcrm -S 0x434d4946; ipcrm -M 0x434d4946."},
    {"queue_full",             "error",   full_queues,          "Restart the daemon if it doesn't take requests; 'cmifctl doctor --fix' removes replies that no caller waits for."},
    {"daemon_ended",           "error",   ended_daemons,        start_daemon},
    {"daemon_frozen",          "error",   frozen_daemons,       "Continue it with 'kill -CONT %', or restart it."},
    {"daemon_silent",          "error",   silent_daemons,       "Start it, or restart it. If 'ps' shows it with the state T, it is stopped: 'kill -CONT' and its process number continue it."},
    {"daemon_not_ready",       "error",   unready_daemon,       start_daemon},
    {"ready_marker_left",      "error",   stale_ready_marker,   "Start the QMI daemon; 'cmifctl doctor --fix' removes the marker.", remove_ready_marker},
    {"requests_waiting",       "warning", waiting_requests,     "They are carried out when the daemon goes on; a restart of the daemon does not remove them."},
    {"requests_foreign",       "warning", foreign_requests,     "Find out which program sends them: 'ipcs -q -p' shows the last sender."},
    {"replies_foreign",        "error",   foreign_replies,      fix_takes, take_foreign_replies},
    {"replies_stale",          "warning", stale_replies,        fix_takes, take_stale_replies},
    {"requests_unanswered",    "warning", unanswered_requests,  "Wait until the daemon has answered; 'cmifctl doctor --fix' stops waiting for it, and a late reply may then pass for another's.", forget_unanswered},
    {"caller_frozen",          "error",   frozen_callers,       "Continue it with 'kill -CONT %', or end it."},

    {"file_irregular",         "error",   irregular_files,      "Remove it: rm -r %."},
    {"profile_marker_left",    "error",   stale_profile_marker, "Remove it: 'cmifctl doctor --fix', or rm " CMIF_PROFILE_BUSY_FILE ".", remove_profile_marker},
    {"profile_change_long",    "warning", long_profile_change,  "If the QMI daemon does not finish it, restart the daemon, then run 'cmifctl doctor --fix'."},
    {"profile_changing",       "note",    new_profile_change,   "Wait some seconds. Until it ends, the state of the data connection can't be read."},

    {"store_unreadable",       "error",   unreadable_store,     "Run it as the store's owner, or name another directory with CMIF_STORE."},
    {"store_differs",          "error",   other_store,          "Set CMIF_STORE to the daemons' directory, or run this as the daemons' user."},
    {"store_empty",            "error",   empty_store,          "If the daemons use another store, set CMIF_STORE to its directory; otherwise restart them."},
    {"settings_unsaved",       "note",    unsaved_settings,     "'cmifctl config save' makes them persistent."},
    {"secrets_traced",         "warning", traced_secrets,       "Switch it off with 'cmifctl config set % 0' and restart the programs that run."},

    {"log_unwritable",         "warning", unwritable_log,       "Make /data writable, or switch the log off with 'cmifctl log disable'."},
    {"log_space",              "warning", little_space,         "'cmifctl log rotate' drops the oldest log; three times, all of them."},

    {"modem_missing",          "error",   missing_modem,        "Check that the modem is plugged in and powered. It may be starting: wait some seconds, then look again."},
    {"sim_absent",             "warning", sim_absent,           "Insert a SIM."},
    {"sim_not_ready",          "warning", sim_not_ready,        "Wait a few seconds, then look again. If it stays so, 'cmifctl sim retries' tells whether the SIM has failed."},
    {"sim_pin_required",       "warning", sim_pin_required,     "Enter it with 'cmifctl sim enter-pin'."},
    {"sim_pin_last",           "warning", sim_pin_last,         "If you are sure of it, enter it with 'cmifctl sim enter-pin --force': after another wrong one, the SIM must be unblocked with its PUK."},
    {"sim_puk_required",       "warning", sim_puk_required,     "Unblock it with 'cmifctl sim enter-puk'."},
    {"sim_puk_last",           "warning", sim_puk_last,         "If you are sure of it, unblock it with 'cmifctl sim enter-puk --force': after another wrong one, the SIM is permanently blocked."},
    {"sim_network_locked",     "warning", sim_network_locked,   "Insert a SIM of the network, or give the control key with 'cmifctl sim unlock-network'."},
    {"sim_blocked",            "error",   sim_blocked,          "Ask the operator for another SIM."},
    {"registration_denied",    "warning", registration_denied,  denied_hint},
    {"searching",              "warning", searching,            searching_hint},
    {"not_registered",         "warning", not_registered,       not_registered_hint},
};
// clang-format on

} // namespace

std::span<const Check> all_checks()
{
    return rows;
}

std::string hint_of(const Check &check, const Problem &problem)
{
    std::string hint = check.hint;
    if (const std::size_t place = hint.find('%'); place != std::string::npos)
        hint.replace(place, 1, problem.target);
    return hint;
}

} // namespace cmifctl
