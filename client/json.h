// The documents of calls and commands: members keep the order in which they were added.
#ifndef CLIENT_JSON_H
#define CLIENT_JSON_H

// The header's own literals, which nothing uses, would have every source compile a parser: as
// templates they don't. A header that writes them in another way is read as it is.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
#define _json(text, size)                                                                          \
    _json(text, size);                                                                             \
    template <class>                                                                               \
    nlohmann::json unused_literal(text, size)
#include <nlohmann/json.hpp>
#undef _json

// Compiled once, in json.cpp, and not in each source that uses it.
extern template class nlohmann::basic_json<nlohmann::ordered_map>;

namespace client
{

using Json = nlohmann::ordered_json;

} // namespace client

#endif
