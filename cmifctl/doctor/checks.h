// The kinds of problem that the doctor knows, one row each.
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
    Problems (*find)(const Look &);      // what is wrong, one for each place
    const char *hint;                    // % is the target
    void (*fix)(const Look &) = nullptr; // removes what no process waits for
};

std::span<const Check> all_checks();
std::string hint_of(const Check &check, const Problem &problem);

// clang-format off
namespace checks
{
// Queues.
Problems missing_queues(const Look &);
Problems queue_permissions(const Look &);
Problems full_queues(const Look &);
Problems waiting_requests(const Look &);
Problems foreign_requests(const Look &);
Problems stale_replies(const Look &);          void take_stale_replies(const Look &);
Problems foreign_replies(const Look &);        void take_foreign_replies(const Look &);
Problems unanswered_requests(const Look &);    void forget_unanswered(const Look &);
Problems frozen_callers(const Look &);
Problems unusable_locks(const Look &);
// Daemons.
Problems ended_daemons(const Look &);
Problems frozen_daemons(const Look &);
Problems silent_daemons(const Look &);
Problems unready_daemon(const Look &);
Problems stale_ready_marker(const Look &);     void remove_ready_marker(const Look &);
// Files.
Problems irregular_files(const Look &);
Problems stale_profile_marker(const Look &);   void remove_profile_marker(const Look &);
Problems long_profile_change(const Look &);
Problems new_profile_change(const Look &);
Problems unwritable_log(const Look &);
Problems little_space(const Look &);
// Store.
Problems unreadable_store(const Look &);
Problems other_store(const Look &);
Problems empty_store(const Look &);
Problems unsaved_settings(const Look &);
Problems traced_secrets(const Look &);
// SIM and network.
Problems missing_modem(const Look &);
Problems sim_absent(const Look &);
Problems sim_not_ready(const Look &);
Problems sim_pin_required(const Look &);
Problems sim_pin_last(const Look &);
Problems sim_puk_required(const Look &);
Problems sim_puk_last(const Look &);
Problems sim_network_locked(const Look &);
Problems sim_blocked(const Look &);
Problems registration_denied(const Look &);
Problems searching(const Look &);
Problems not_registered(const Look &);
} // namespace checks
// clang-format on

} // namespace cmifctl

#endif
