// The keys of the configuration store whose values are secrets or identities.
#ifndef CMIF_RECORD_SECRET_KEYS_H
#define CMIF_RECORD_SECRET_KEYS_H

#include <string_view>

namespace cmif_record
{

// Those that the daemons publish, and a platform's own keys whose names contain a telling word.
bool is_secret(std::string_view key, std::string_view value);

} // namespace cmif_record

#endif
