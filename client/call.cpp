#include "call.h"

#include "call_monitor.h"

namespace client
{

Answer call(const CallOptions &options, const Call &call)
{
    return CallMonitor(options, call).wait_for_answer();
}

} // namespace client
