// The requests of the AT channel: which fields of the record they use, and what they ask the modem.
#ifndef DAEMONS_AT_REQUESTS_H
#define DAEMONS_AT_REQUESTS_H

#include "at_verbs.h"
#include "cmif/cmif.h"

namespace daemons
{

// Where a field is in the record. `first_byte` is the first of set_string, as a number.
enum class AtFieldSlot { none, string1, string2, string3, value, first_byte };

struct AtField {
    AtFieldSlot slot = AtFieldSlot::none;
    const char *label = "";
    bool secret = false;
};

// Searches and registrations take up to minutes, and only wait for each other.
enum class AtLane { fast, slow };

struct AtRequest {
    cmif_at_code code;
    const char *name;
    AtVerb verb; // none for a request that is never answered
    AtField fields[4] = {};
    AtLane lane = AtLane::fast;
};

// The row of a request code, or nullptr.
const AtRequest *find_at_request(long code);

} // namespace daemons

#endif
