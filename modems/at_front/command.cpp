#include "command.h"

namespace at_front
{

Answer set_flag(Call &call, bool &flag)
{
    const auto value = call.given.number(0, 0, 0, 1);
    if (!value)
        return error;
    flag = *value == 1;
    return ok;
}

const Command *find_command(std::string_view name)
{
    for (const auto table :
         {settings_commands, clock_commands, identity_commands, sim_commands, network_commands,
          signal_commands, message_commands, context_commands, call_commands, vendor_commands})
        for (const Command &row : table())
            if (row.name == name)
                return &row;
    return nullptr;
}

} // namespace at_front
