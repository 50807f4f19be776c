// The running configuration: an LMDB file that every process maps.
//
// Readers take no lock, and each sees the values of one moment. Writers take turns under a lock
// that the system releases when its holder is killed; a change that was not committed is then never
// seen. Nothing is synced: the file is used until the host restarts, and the first process of the
// next run creates another from the saved configuration.
#ifndef PLATFORM_RUNNING_STORE_H
#define PLATFORM_RUNNING_STORE_H

#include "saved_text.h"

#include <functional>
#include <string_view>

namespace host_store
{

// All of these return false after reporting why, and open the store if this process has not.

bool is_open();
// Calls `use` with the value, "" when unset, which is valid during that call.
bool read_value(std::string_view key, const std::function<void(std::string_view)> &use);
bool write_value(std::string_view key, std::string_view value);
// All entries, sorted by key.
bool read_all(Entries &entries);
// Replaces everything by the saved configuration, atomically.
bool reload_saved();

} // namespace host_store

#endif
