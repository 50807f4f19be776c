// AT commands as rows of tables, one table for each subject.
#ifndef MODEMS_AT_FRONT_COMMAND_H
#define MODEMS_AT_FRONT_COMMAND_H

#include "answer.h"
#include "device.h"
#include "parameters.h"

#include <functional>
#include <span>
#include <string_view>

namespace at_front
{

// One command as it is carried out.
struct Call {
    Device &device;
    Session &session;
    Parameters given{};
    // Whether the terminal has sent a character meanwhile, which calls a long command off.
    const std::function<bool()> &called_off;
};

using Handler = Answer (*)(Call &call);

// What a null handler would do is answered ERROR; a null text of `test`, too, and "" is OK alone.
struct Command {
    std::string_view name;
    const char *test;
    Handler read, set, execute;
    Handler run_test = nullptr; // where the answer has to be found out
};
using Commands = std::span<const Command>;

Commands settings_commands();
Commands clock_commands();
Commands identity_commands();
Commands sim_commands();
Commands network_commands();
Commands signal_commands();
Commands message_commands();
Commands context_commands();
Commands call_commands();
Commands vendor_commands(); // what ModemManager's u-blox plugin asks for

// Sets the flag to the first parameter, 0 or 1.
Answer set_flag(Call &call, bool &flag);

// Ends +CMGS: the text that followed its prompt.
Answer send_message(Call &call, const std::string &text);

const Command *find_command(std::string_view name);

} // namespace at_front

#endif
