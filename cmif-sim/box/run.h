// A program beside a simulated router of its own.
#ifndef CMIF_SIM_BOX_RUN_H
#define CMIF_SIM_BOX_RUN_H

#include "cmif-sim/router/router.h"

#include <string>
#include <vector>

namespace cmif_sim
{

// Starts a router in a sandbox, waits until its daemons are ready, runs `command` (a shell if it is
// empty), and ends everything. The command's exit status; 127 if there is no such program, 126 if
// it can't be run, 1 if the router does not start.
int run(const ServerOptions &options, const std::vector<std::string> &command);

// The same with something else inside.
using Inside =
    std::function<int(const ServerOptions &options, const std::vector<std::string> &command)>;
int run_beside(const ServerOptions &options, const std::vector<std::string> &command,
               const Inside &inside);

} // namespace cmif_sim

#endif
