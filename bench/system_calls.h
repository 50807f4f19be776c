#ifndef BENCH_SYSTEM_CALLS_H
#define BENCH_SYSTEM_CALLS_H

#include <functional>

namespace bench
{

// The system calls that `work` makes from its second call on, counted by tracing a child.
int system_calls(const std::function<void()> &work);

} // namespace bench

#endif
