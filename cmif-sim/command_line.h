// The command line of cmif-sim.
#ifndef CMIF_SIM_COMMAND_LINE_H
#define CMIF_SIM_COMMAND_LINE_H

#include "cli/line.h"
#include "cmif-sim/box/run.h"

#include <optional>
#include <sys/types.h>

namespace cmif_sim
{

const cli::Program &tables();

// Returns the options of `run` and `serve`. Fails with UsageError, and with scenario::BadScript if
// the scenario can't be read.
ServerOptions server_options(const cli::Arguments &given);

// Returns the box that `ctl`, `status` and `enter` are for. Fails with UsageError.
std::optional<pid_t> chosen_box(const cli::Arguments &given);

} // namespace cmif_sim

#endif
