// The directory that holds the store of all processes of one user.
#ifndef PLATFORM_STORE_DIRECTORY_H
#define PLATFORM_STORE_DIRECTORY_H

#include <string>

namespace host_store
{

// A remedy, for messages.
inline constexpr const char *store_hint = "set CMIF_STORE to a directory that you can write";

// The absolute path, chosen at the first call.
const std::string &store_directory();

} // namespace host_store

#endif
