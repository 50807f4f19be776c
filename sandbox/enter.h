// Work in a sandbox that is in use.
#ifndef SANDBOX_ENTER_H
#define SANDBOX_ENTER_H

#include "worker.h"

namespace sandbox
{

// Does `work` in a child process in the sandbox that process `runner` has made with
// run_in_sandbox(); where that one shares this process's namespaces, in these. Its exit status, or
// 128 + N if signal N ended it; 1, and a line on standard error, if the system refuses.
//
// The child keeps its own process number, but its children have theirs in the sandbox. It can't
// start threads.
int enter_sandbox(pid_t runner, const Work &work);

} // namespace sandbox

#endif
