// Tries at a PIN or PUK are few: counted before and after, and the last one kept back.
#ifndef CMIFCTL_VERBS_PIN_ATTEMPTS_H
#define CMIFCTL_VERBS_PIN_ATTEMPTS_H

#include "cmifctl/context.h"

namespace cmifctl
{

// The retry counters, {"pin1", "puk1", "pin2", "puk2"}, as the AT daemon reads them from the SIM.
Json retry_counters(const Invocation &run);

struct Attempt {
    const char *counter; // the member of the counters that a wrong answer costs
    const char *secret;  // "PIN"
    const char *done;    // "the PIN is accepted"
    Call call;
};

// The tries that are left. Refuses without --force when it is one, and when it is none.
Json require_tries(const Invocation &run, const char *counter, const char *secret);

// Makes the attempt and reports the tries before and after.
void attempt(Invocation &run, const Json &before, const Attempt &attempt);

} // namespace cmifctl

#endif
