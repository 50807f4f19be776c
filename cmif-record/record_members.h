// A record of a message queue as members of a line.
#ifndef CMIF_RECORD_RECORD_MEMBERS_H
#define CMIF_RECORD_RECORD_MEMBERS_H

#include "entry.h"
#include "json_line.h"
#include "stand_in.h"

#include <optional>

namespace cmif_record
{

// "code", "name", "size" and "fields". What the fields do not tell follows as "payload", all bytes
// in hex. With a key, secrets are replaced by stand-ins.
void add_record(JsonLine &line, Queue queue, const Record &record,
                const std::optional<StandInKey> &key);

// Whether a request's field of this name holds a secret.
bool is_secret_field(Channel channel, long code, std::string_view name);

} // namespace cmif_record

#endif
