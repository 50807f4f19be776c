// Attempts at a PIN or PUK, of which a SIM allows few, from the first reading of the counters to
// the verdict.
#ifndef CMIFCTL_VERBS_PIN_ATTEMPTS_H
#define CMIFCTL_VERBS_PIN_ATTEMPTS_H

#include "cmifctl/calls.h"
#include "cmifctl/input/secrets.h"

#include <functional>
#include <string>
#include <vector>

namespace cmifctl
{

struct Attempt {
    const char *counter;    // that a wrong answer lowers
    const char *secret;     // "PIN", for messages
    const char *asked_when; // the published SIM status in which the SIM asks for it; "" for any
    std::vector<SecretForm> secrets;
    Request request;
    // Calls the library with the secrets, in the child.
    std::function<int(const std::vector<std::string> &secrets)> call;
    const char *result; // for programs, when it succeeds
    const char *done;   // for people
};

// One pass: reads the counters, asks for the secrets, and then, with the SIM's requests locked
// against other callers, reads them again, makes the attempt, judges the answer by the counters and
// reports. Refuses an attempt that could block the SIM, or that the SIM has not asked for, unless
// --force is given.
void make_attempt(Context &context, const Attempt &attempt);

} // namespace cmifctl

#endif
