#include "call.h"

#include "call_monitor.h"
#include "signals.h"

namespace client
{

Answer call(const CallOptions &options, const Call &call)
{
    return CallMonitor(options, call).wait_for_answer();
}

std::vector<RequestCode> codes_of(const Call &call)
{
    std::vector<RequestCode> codes{call.request.code};
    codes.insert(codes.end(), call.further.begin(), call.further.end());
    return codes;
}

CodeLock lock_codes(const CallOptions &options, const std::vector<RequestCode> &codes)
{
    const HeldSignals signals;
    return {codes, options.timeout.value_or(default_timeout), [&signals] { signals.check(); }};
}

} // namespace client
