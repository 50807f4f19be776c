// The requests of the AT channel: their form, and what they ask the modem.
#ifndef DAEMONS_AT_REQUESTS_H
#define DAEMONS_AT_REQUESTS_H

#include "at_forms.h"
#include "at_verbs.h"

namespace daemons
{

// Searches and registrations take up to minutes, and only wait for each other.
enum class AtLane { fast, slow };

struct AtRequest : AtForm {
    AtVerb verb; // none for a request that is never answered
    AtLane lane = AtLane::fast;
};

// The row of a request code, or nullptr.
const AtRequest *find_at_request(long code);

} // namespace daemons

#endif
