// The documents of calls and commands.
#ifndef CLIENT_JSON_H
#define CLIENT_JSON_H

#include "json_fwd.h"

// The header's own literals, which nothing uses, would have every source compile a parser: as
// templates they don't. A header that writes them in another way is read as it is.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
#define _json(text, size)                                                                          \
    _json(text, size);                                                                             \
    template <class>                                                                               \
    nlohmann::json unused_literal(text, size)
#include <nlohmann/json.hpp>
#undef _json

// The members that most sources use, compiled once, in json.cpp, and not in each of them.
#define CLIENT_JSON_MEMBERS(EXTERN, JSON)                                                          \
    EXTERN template JSON::~basic_json();                                                           \
    EXTERN template JSON::basic_json(const JSON &);                                                \
    EXTERN template JSON::basic_json(JSON &&) noexcept;                                            \
    EXTERN template JSON::basic_json(JSON::value_t);                                               \
    EXTERN template JSON::basic_json(JSON::initializer_list_t, bool, JSON::value_t);               \
    EXTERN template JSON JSON::array(JSON::initializer_list_t);                                    \
    EXTERN template JSON JSON::object(JSON::initializer_list_t);                                   \
    EXTERN template JSON::reference JSON::operator[](JSON::object_t::key_type);                    \
    EXTERN template JSON::const_reference JSON::operator[](const JSON::object_t::key_type &)       \
        const;                                                                                     \
    EXTERN template bool JSON::operator==(const JSON &) const noexcept;                            \
    EXTERN template void JSON::push_back(JSON &&);                                                 \
    EXTERN template JSON::string_t JSON::dump(int, char, bool, JSON::error_handler_t) const;

namespace nlohmann
{

CLIENT_JSON_MEMBERS(extern, basic_json<ordered_map>)

} // namespace nlohmann

#endif
