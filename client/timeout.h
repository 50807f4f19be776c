// What a call that was not answered in time fails with.
#ifndef CLIENT_TIMEOUT_H
#define CLIENT_TIMEOUT_H

#include "request.h"
#include "sent_record.h"
#include "unanswered.h"

namespace client
{

// Withdraws the request if it is still queued. The Failure tells what became of it. `unanswered`
// is null for a call that asks no daemon.
[[noreturn]] void fail_timed_out(const Request &request, const SentRecord &sent,
                                 Unanswered *unanswered, double seconds);

// An earlier request, sent `age` seconds ago, has kept this one from being sent.
[[noreturn]] void fail_earlier_unanswered(const Request &request, double age, double seconds);

} // namespace client

#endif
