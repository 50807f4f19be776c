// The store's database, opened once for each process.
#ifndef PLATFORM_OPEN_STORE_H
#define PLATFORM_OPEN_STORE_H

#include "database.h"

#include <string>

namespace host_store
{

// The open database, which stays open until the process ends; a forked child opens it again. Null
// after reporting why it can't be opened; the next call tries again.
const Database *open_store();

// After store_was_deleted, which is reported: the next open_store() opens another.
void leave_store(const Database *store);

// The database's file.
std::string database_path();

} // namespace host_store

#endif
