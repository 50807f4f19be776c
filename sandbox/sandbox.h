/*
 * The box that programs run in beside the simulated router: message queues, processes, /tmp and
 * /data of their own, the rest of the file system as it is.
 */
#ifndef SANDBOX_SANDBOX_H
#define SANDBOX_SANDBOX_H

#include <functional>
#include <string>
#include <vector>

namespace sim
{

/*
 * Runs `inside` in a child process in name spaces of its own and returns its exit status, 128 + N
 * if signal N ended it. Whatever it started ends with it, and it ends with the caller.
 *
 * Of /tmp and /data only what is needed stays visible: the topmost folders that hold the current
 * directory, this program, and the folders named in `keep`.
 *
 * Where the system refuses name spaces, or CMIF_SANDBOX=none asks for none, `inside` runs in those
 * of the caller: one such run at a time on the machine, none while somebody else uses the queues or
 * marker files, and what a run leaves of those is removed.
 */
int run_in_sandbox(const std::function<int()> &inside, const std::vector<std::string> &keep = {});

} // namespace sim

#endif
