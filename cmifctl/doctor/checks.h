// The kinds of trouble that the doctor knows, one row each.
#ifndef CMIFCTL_DOCTOR_CHECKS_H
#define CMIFCTL_DOCTOR_CHECKS_H

#include "look.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

namespace cmifctl
{

// One place where something is wrong. The target takes the place of % in the hint.
struct Trouble {
    Trouble(const char *what) : text(what) {}
    Trouble(std::string what, std::string of = {}) : text(std::move(what)), target(std::move(of)) {}

    std::string text;
    std::string target{};
};
using Troubles = std::vector<Trouble>;

struct Check {
    const char *name;
    const char *severity; // "error": something doesn't work; "warning"; "note": no trouble
    Troubles (*find)(const Look &);      // what is wrong, one for each place
    const char *hint;                    // % is the target
    void (*fix)(const Look &) = nullptr; // removes what no process waits for
};

std::span<const Check> all_checks();
std::string hint_of(const Check &check, const Trouble &trouble);

// clang-format off
namespace checks
{
// Queues.
Troubles missing_queues(const Look &);
Troubles queue_permissions(const Look &);
Troubles full_queues(const Look &);
Troubles waiting_requests(const Look &);
Troubles foreign_requests(const Look &);
Troubles stale_replies(const Look &);          void take_stale_replies(const Look &);
Troubles foreign_replies(const Look &);        void take_foreign_replies(const Look &);
Troubles unanswered_requests(const Look &);    void forget_unanswered(const Look &);
Troubles frozen_callers(const Look &);
Troubles unusable_locks(const Look &);
// Daemons.
Troubles ended_daemons(const Look &);
Troubles frozen_daemons(const Look &);
Troubles silent_daemons(const Look &);
Troubles unready_daemon(const Look &);
Troubles stale_ready_marker(const Look &);     void remove_ready_marker(const Look &);
// Files.
Troubles irregular_files(const Look &);
Troubles stale_profile_marker(const Look &);   void remove_profile_marker(const Look &);
Troubles long_profile_change(const Look &);
Troubles new_profile_change(const Look &);
Troubles unwritable_log(const Look &);
Troubles little_space(const Look &);
// Store.
Troubles unreadable_store(const Look &);
Troubles other_store(const Look &);
Troubles empty_store(const Look &);
Troubles unsaved_settings(const Look &);
Troubles traced_secrets(const Look &);
// SIM and network.
Troubles missing_modem(const Look &);
Troubles sim_absent(const Look &);
Troubles sim_not_ready(const Look &);
Troubles sim_pin_required(const Look &);
Troubles sim_pin_last(const Look &);
Troubles sim_puk_required(const Look &);
Troubles sim_puk_last(const Look &);
Troubles sim_network_locked(const Look &);
Troubles sim_blocked(const Look &);
Troubles registration_denied(const Look &);
Troubles searching(const Look &);
Troubles not_registered(const Look &);
} // namespace checks
// clang-format on

} // namespace cmifctl

#endif
