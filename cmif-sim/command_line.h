// The command line of cmif-sim.
#ifndef CMIF_SIM_COMMAND_LINE_H
#define CMIF_SIM_COMMAND_LINE_H

#include "cli/line.h"
#include "run.h"

namespace cmif_sim
{

const cli::Program &tables();

// Of `run` and `serve`. Fails with UsageError.
ServerOptions server_options(const cli::Arguments &given);

} // namespace cmif_sim

#endif
