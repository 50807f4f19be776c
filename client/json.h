// The documents of calls and commands: members keep the order in which they were added.
#ifndef CLIENT_JSON_H
#define CLIENT_JSON_H

#include <nlohmann/json.hpp>

// Compiled once, in json.cpp, and not in each source that uses it.
extern template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace client
{

using Json = nlohmann::ordered_json;

} // namespace client

#endif
