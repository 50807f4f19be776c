// The sandbox without namespaces: the queues, /tmp and /data are those of the whole machine.
#ifndef SANDBOX_UNISOLATED_H
#define SANDBOX_UNISOLATED_H

#include "worker.h"

namespace sandbox
{

// The environment variable that chooses the kind of sandbox, and its values: set by the user, and
// by a run for the runs inside it.
inline constexpr const char *sandbox_variable = "CMIF_SANDBOX";
inline constexpr const char *no_namespaces = "none";
inline constexpr const char *lock_is_held = "held";

enum class Lock { take, inherited };

// Does `work` and returns its exit status. With Lock::take, waits until no other such run is in
// progress; a run inside another one inherits its lock. If another program uses the queues or files
// of the router, prints which and returns 1. Removes those that the work leaves.
int run_unisolated(const Work &work, const InterruptsIgnored &interrupts, Lock lock);

} // namespace sandbox

#endif
