// The running configuration: an LMDB file that every process maps.
//
// Readers take no lock and see one moment each. Writers take turns under a lock that the system
// releases when its holder is killed; what was half written is then never seen. Nothing is synced:
// the file serves until the host restarts, and the next start makes another from what was saved.
#ifndef PLATFORM_RUNNING_STORE_H
#define PLATFORM_RUNNING_STORE_H

#include "saved_text.h"

#include <functional>
#include <string_view>

namespace host_store
{

// All of these are false after a complaint.

// Opens the store, if this process has not; on a fresh start, with what was saved.
bool is_open();
// Shows the value, "" when unset, to `use`, for the length of that call.
bool read_value(std::string_view key, const std::function<void(std::string_view)> &use);
bool write_value(std::string_view key, std::string_view value);
// Everything, sorted by key.
bool read_all(Entries &entries);
// Drops everything and loads what was saved, at one stroke.
bool start_anew();

} // namespace host_store

#endif
