#include "commands.h"

namespace simulated
{

scenario::Commands modem_commands(Modem &modem)
{
    scenario::Commands all;
    for (const auto part : {network_commands, sim_commands, message_commands, modem_state_commands})
        for (scenario::Command &command : part(modem))
            all.push_back(std::move(command));
    return all;
}

} // namespace simulated
