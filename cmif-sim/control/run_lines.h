// Command lines from a person or a test: read whole, then carried out.
#ifndef CMIF_SIM_CONTROL_RUN_LINES_H
#define CMIF_SIM_CONTROL_RUN_LINES_H

#include "protocol.h"
#include "scenario/command.h"

namespace cmif_sim
{

// Carries out all lines, in order; none of them if one is wrong. The text names what is wrong, a
// line each, as LINE:COLUMN: MESSAGE.
Answer run_lines(const scenario::Commands &commands, const std::string &lines);

} // namespace cmif_sim

#endif
