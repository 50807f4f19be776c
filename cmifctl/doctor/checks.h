// The kinds of trouble that the doctor knows, one row each.
#ifndef CMIFCTL_DOCTOR_CHECKS_H
#define CMIFCTL_DOCTOR_CHECKS_H

#include "look.h"

#include <span>
#include <string>
#include <vector>

namespace cmifctl
{

using Texts = std::vector<std::string>;

struct Check {
    const char *name;
    const char *severity;        // "error": something doesn't work; "warning"; "note": no trouble
    Texts (*find)(const Look &); // what is wrong, one text for each place
    const char *cure;
    void (*fix)(const Look &) = nullptr; // takes away what no process waits for
};

std::span<const Check> all_checks();

// clang-format off
namespace checks
{
// Queues.
Texts missing_queues(const Look &);
Texts queue_permissions(const Look &);
Texts full_queues(const Look &);
Texts waiting_requests(const Look &);
Texts foreign_requests(const Look &);
Texts stale_replies(const Look &);          void take_stale_replies(const Look &);
Texts foreign_replies(const Look &);        void take_foreign_replies(const Look &);
Texts unanswered_requests(const Look &);    void forget_unanswered(const Look &);
Texts frozen_callers(const Look &);
Texts unusable_locks(const Look &);
// Daemons.
Texts ended_daemons(const Look &);
Texts frozen_daemons(const Look &);
Texts silent_daemons(const Look &);
Texts unready_daemon(const Look &);
Texts stale_ready_marker(const Look &);     void remove_ready_marker(const Look &);
// Files.
Texts irregular_files(const Look &);
Texts stale_profile_marker(const Look &);   void remove_profile_marker(const Look &);
Texts long_profile_change(const Look &);
Texts unwritable_log(const Look &);
Texts little_space(const Look &);
// Store.
Texts unreadable_store(const Look &);
Texts other_store(const Look &);
Texts empty_store(const Look &);
Texts unsaved_settings(const Look &);
Texts traced_secrets(const Look &);
// SIM and network.
Texts missing_modem(const Look &);
Texts sim_absent(const Look &);
Texts sim_not_ready(const Look &);
Texts sim_pin_required(const Look &);
Texts sim_puk_required(const Look &);
Texts sim_network_locked(const Look &);
Texts sim_blocked(const Look &);
Texts registration_denied(const Look &);
Texts searching(const Look &);
Texts not_registered(const Look &);
} // namespace checks
// clang-format on

} // namespace cmifctl

#endif
