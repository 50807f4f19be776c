#include "json.h"

namespace nlohmann
{

CLIENT_JSON_MEMBERS(, basic_json<ordered_map>)

} // namespace nlohmann
