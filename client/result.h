// What a result code of the library means: nothing for 0, a Failure for any other.
#ifndef CLIENT_RESULT_H
#define CLIENT_RESULT_H

#include "failure.h"

namespace cmifctl
{

// A daemon's own codes, numbered as a modem's error report is (3GPP TS 27.007).
struct Refusal {
    int code;
    const char *name;
    const char *hint; // "" when there is nothing to advise
};

// Null for a code that isn't in the table.
const Refusal *refusal(int code);

// "incorrect password (16)"
std::string refusal_text(int code);

// Whether `result` of an AT request is the library's own: the daemon has not answered.
bool channel_failed(int result);

void check_at(const char *name, int result);
void check_qmi(const char *name, int result);

} // namespace cmifctl

#endif
