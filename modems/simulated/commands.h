// The commands of the scenario language that act on the modem: the same for a line from a
// terminal, a scenario file and a test.
#ifndef MODEMS_SIMULATED_COMMANDS_H
#define MODEMS_SIMULATED_COMMANDS_H

#include "modem.h"
#include "scenario/command.h"

namespace simulated
{

// Their actions use the modem. One that can't be done as the modem is now fails with a
// std::runtime_error.
scenario::Commands modem_commands(Modem &modem);

// By subject.
scenario::Commands network_commands(Modem &modem);
scenario::Commands sim_commands(Modem &modem);
scenario::Commands message_commands(Modem &modem);
scenario::Commands modem_state_commands(Modem &modem);

} // namespace simulated

#endif
