// The sandbox that programs run in beside the simulated router: message queues, processes, /tmp and
// /data of their own, and the rest of the file system as it is.
#ifndef SANDBOX_SANDBOX_H
#define SANDBOX_SANDBOX_H

#include <functional>
#include <string>
#include <vector>

namespace sandbox
{

// Runs `work` in a child process in namespaces of its own and waits for it. Its exit status, or
// 128 + N if signal N ended it; 1 if no process could be started. All processes that it started end
// with it, and it ends with the caller.
//
// Under /tmp and /data, `work` sees only the topmost directories that contain the current
// directory, this program, or one of `visible_paths`.
//
// If the system refuses namespaces, or the environment has CMIF_SANDBOX=none, `work` runs in the
// caller's namespaces: one run at a time on the machine, and none while another program uses the
// message queues or files of the router. What the run leaves of these is removed.
int run_in_sandbox(const std::function<int()> &work,
                   const std::vector<std::string> &visible_paths = {});

// Returns whether this process is in a run that has no namespaces.
bool shares_namespaces();

} // namespace sandbox

#endif
