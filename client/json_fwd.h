// The type of documents, declared; json.h defines it.
#ifndef CLIENT_JSON_FWD_H
#define CLIENT_JSON_FWD_H

#include <nlohmann/json_fwd.hpp>

namespace client
{

using Json = nlohmann::ordered_json; // members keep the order in which they were added

} // namespace client

#endif
