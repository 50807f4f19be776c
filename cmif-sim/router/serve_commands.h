// A simulation that takes commands until its process is told to end.
#ifndef CMIF_SIM_ROUTER_SERVE_COMMANDS_H
#define CMIF_SIM_ROUTER_SERVE_COMMANDS_H

#include "cmif-sim/control/box_sockets.h"
#include "simulation.h"

#include <csignal>
#include <functional>
#include <optional>
#include <vector>

namespace cmif_sim
{

// The sockets on which commands come: that of the options, and one of this process's own where a
// program could not see that.
std::vector<int> listening(const ServerOptions &options, std::optional<BoxSocket> &own);

// Calls `ready` once commands are taken, and returns with one of the signals, which are blocked.
void serve_commands(const Simulation &simulation, const ServerOptions &options,
                    const sigset_t &signals, const std::function<void()> &ready);

// Writes one byte to the file, unless that is negative.
void notify_ready(int fd);

} // namespace cmif_sim

#endif
