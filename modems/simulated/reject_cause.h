// Why a network refuses or ends its service: the numbers of 3GPP TS 24.301.
#ifndef MODEMS_SIMULATED_REJECT_CAUSE_H
#define MODEMS_SIMULATED_REJECT_CAUSE_H

#include "daemons/cme_error.h"
#include "scenario/words.h"

#include <span>

namespace simulated
{

struct RejectCause {
    int number;
    const char *meaning;
    daemons::CmeError error; // that a connection ends with
};

std::span<const RejectCause> registration_causes(); // of the mobility management
std::span<const RejectCause> connection_causes();   // of the session management

// The next word as the number of one of them.
const RejectCause &take_cause(scenario::Words &words, std::span<const RejectCause> causes);

} // namespace simulated

#endif
