// What a result code of the library means: 0 passes, any other throws a Failure.
#ifndef CLIENT_RESULT_H
#define CLIENT_RESULT_H

#include "failure.h"

#include <string>
#include <string_view>

namespace client
{

// Of an AT request. One that the daemon has answered gives the daemon's error, which may have the
// number of one of the library's own.
void check_at(const char *name, int result, bool answered);
void check_qmi(const char *name, int result);

// A daemon's error for people, for example "incorrect password (16)".
std::string daemon_error_text(int code);
// What to do about it; empty when there is nothing to advise. `function` is the library's.
std::string daemon_error_hint(int code, std::string_view function = "");
// A daemon's error for programs: {"code": 16, "name": "incorrect_password"}; the name of an unknown
// code is null.
Json daemon_error(int code);

} // namespace client

#endif
