// Attempts at a PIN or PUK are few: they are counted before and after, and the last one is kept.
#ifndef CMIFCTL_VERBS_PIN_ATTEMPTS_H
#define CMIFCTL_VERBS_PIN_ATTEMPTS_H

#include "cmifctl/calls.h"

namespace cmifctl
{

// The attempts left, {"pin1", "puk1", "pin2", "puk2"}, as the AT daemon reads them from the SIM.
Json retry_counters(const Context &context);

struct Attempt {
    const char *counter; // the member of the counters that a wrong secret reduces
    const char *secret;  // "PIN"
    const char *done;    // "the PIN is accepted"
    Call call;
};

// The attempts left. Fails without any, and with one unless --force is given.
Json check_retry_counter(const Context &context, const char *counter, const char *secret);

// Makes the attempt and reports the attempts left before and after.
void make_attempt(Context &context, const Json &before, const Attempt &attempt);

} // namespace cmifctl

#endif
