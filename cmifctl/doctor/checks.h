// The kinds of problem that the doctor knows, one row each.
#ifndef CMIFCTL_DOCTOR_CHECKS_H
#define CMIFCTL_DOCTOR_CHECKS_H

#include "snapshot.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

namespace cmifctl
{

// One place where something is wrong. The target takes the place of % in the hint.
struct Problem {
    Problem(const char *what) : text(what) {}
    Problem(std::string what, std::string of = {}) : text(std::move(what)), target(std::move(of)) {}

    std::string text;
    std::string target{};
};
using Problems = std::vector<Problem>;

struct Check {
    const char *name;
    const char *severity; // "error": something doesn't work; "warning"; "note": no problem
    Problems (*find)(const Snapshot &);      // what is wrong, one for each place
    const char *hint;                        // % is the target
    void (*fix)(const Snapshot &) = nullptr; // removes what no process waits for
};

std::span<const Check> all_checks();
std::string hint_of(const Check &check, const Problem &problem);

// clang-format off
namespace checks
{
// Queues.
Problems missing_queues(const Snapshot &);
Problems queue_permissions(const Snapshot &);
Problems full_queues(const Snapshot &);
Problems waiting_requests(const Snapshot &);
Problems foreign_requests(const Snapshot &);
Problems stale_replies(const Snapshot &);          void take_stale_replies(const Snapshot &);
Problems foreign_replies(const Snapshot &);        void take_foreign_replies(const Snapshot &);
Problems unanswered_requests(const Snapshot &);    void forget_unanswered(const Snapshot &);
Problems frozen_callers(const Snapshot &);
Problems unusable_locks(const Snapshot &);
// Daemons.
Problems ended_daemons(const Snapshot &);
Problems frozen_daemons(const Snapshot &);
Problems silent_daemons(const Snapshot &);
Problems unready_daemon(const Snapshot &);
Problems stale_ready_marker(const Snapshot &);     void remove_ready_marker(const Snapshot &);
// Files.
Problems irregular_files(const Snapshot &);
Problems stale_profile_marker(const Snapshot &);   void remove_profile_marker(const Snapshot &);
Problems long_profile_change(const Snapshot &);
Problems new_profile_change(const Snapshot &);
Problems unwritable_log(const Snapshot &);
Problems little_space(const Snapshot &);
// Store.
Problems unreadable_store(const Snapshot &);
Problems other_store(const Snapshot &);
Problems empty_store(const Snapshot &);
Problems unsaved_settings(const Snapshot &);
Problems traced_secrets(const Snapshot &);
// SIM and network.
Problems missing_modem(const Snapshot &);
Problems sim_absent(const Snapshot &);
Problems sim_not_ready(const Snapshot &);
Problems sim_pin_required(const Snapshot &);
Problems sim_pin_last(const Snapshot &);
Problems sim_puk_required(const Snapshot &);
Problems sim_puk_last(const Snapshot &);
Problems sim_network_locked(const Snapshot &);
Problems sim_blocked(const Snapshot &);
Problems registration_denied(const Snapshot &);
Problems searching(const Snapshot &);
Problems not_registered(const Snapshot &);
} // namespace checks
// clang-format on

} // namespace cmifctl

#endif
