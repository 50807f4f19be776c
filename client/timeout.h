// What a call that was not answered in time fails with.
#ifndef CLIENT_TIMEOUT_H
#define CLIENT_TIMEOUT_H

#include "request.h"

namespace client
{

// Withdraws the request if it is still queued. The Failure tells what became of it.
[[noreturn]] void fail_timed_out(const Request &request, double seconds);

} // namespace client

#endif
