// The process that does the work in a sandbox, and waiting for it.
#ifndef SANDBOX_WORKER_H
#define SANDBOX_WORKER_H

#include <functional>
#include <sys/types.h>

namespace sandbox
{

class InterruptsIgnored;
using Work = std::function<int()>;

inline constexpr pid_t any_child = -1;

// Reaps children, `reaped` (as waitpid takes it), until `awaited` has ended. Its exit status, or
// 128 + N if signal N ended it; 1 if there is no such child, or none could be started (-1).
int wait_for(pid_t awaited, pid_t reaped);

// For a new process: it gets this signal when `parent`, which has forked it, ends. If that has
// happened already, it exits.
void end_with_parent(pid_t parent, int signal);

// Forks the worker: it exits with the result of `work`, and is killed if this process ends. The
// caller has its pid, or -1.
pid_t start_worker(const Work &work, const InterruptsIgnored &interrupts) noexcept;

} // namespace sandbox

#endif
