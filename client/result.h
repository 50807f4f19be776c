// What a result code of the library means: 0 passes, any other throws a Failure.
#ifndef CLIENT_RESULT_H
#define CLIENT_RESULT_H

#include "failure.h"

#include <string>
#include <string_view>

namespace client
{

// Of an AT request. A result that is not the library's own is the daemon's error.
void check_at(const char *name, int result);
void check_qmi(const char *name, int result);

// Whether `result` of an AT request is the library's own, so that the daemon has not answered.
bool channel_failed(int result);

// A daemon's error for people, for example "incorrect password (16)".
std::string daemon_error_text(int code);
// What to do about it; empty when there is nothing to advise. `function` is the library's.
std::string daemon_error_hint(int code, std::string_view function = "");
// A daemon's error for programs: {"code": 16, "name": "incorrect_password"}; the name of an unknown
// code is null.
Json daemon_error(int code);

} // namespace client

#endif
