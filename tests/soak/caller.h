// One call of a request, through client/ or through the tool.
#ifndef TESTS_SOAK_CALLER_H
#define TESTS_SOAK_CALLER_H

#include "answering_daemon.h"

namespace soak
{

enum class Outcome { answered, foreign_answer, withdrawn, picked_up, not_sent, failed };

using Caller = Outcome (*)(const Request &request, double seconds);

Outcome call_at(const Request &request, double seconds);
Outcome call_qmi(const Request &request, double seconds);
Outcome run_tool(const Request &request, double seconds);

} // namespace soak

#endif
