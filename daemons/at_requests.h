// The requests of the AT channel: what their records hold and what the modem does about them.
#ifndef DAEMONS_AT_REQUESTS_H
#define DAEMONS_AT_REQUESTS_H

#include "modems/simulated/modem.h"

#include <string>
#include <vector>

namespace sim
{

// Where in the record a field lies. `first_byte` is the first of set_string, as a number.
enum class AtPlace { none, string1, string2, string3, value, first_byte };

struct AtField {
    AtPlace place = AtPlace::none;
    const char *label = "";
    bool secret = false;
};

enum class AtAnswer { at_once, after_search, never };

using AtArguments = std::vector<std::string>; // in the order of the row's fields

struct AtRequest {
    long code;
    const char *name;
    RetCode (*handle)(ModemState &, const AtArguments &);
    AtField fields[4] = {};
    Needs needs = Needs::nothing;
    AtAnswer answer = AtAnswer::at_once;
};

// The row of a request code, or nullptr.
const AtRequest *find_at_request(long code);

} // namespace sim

#endif
