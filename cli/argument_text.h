// Commands and arguments as help and manual show them.
#ifndef CLI_ARGUMENT_TEXT_H
#define CLI_ARGUMENT_TEXT_H

#include "table.h"

namespace cli
{

// "--apn NAME", "-h, --help", "MODE", "[-]", "[-- PROGRAM [ARGUMENT...]]"
std::string usage_of(const Argument &argument);

// The help, and the choices when there are several.
std::string meaning_of(const Argument &argument);

// "sim enter-pin [-] [--force]"
std::string usage_of(const Command &command);

// "cmifctl radio mode 4g"
std::string example_of(const Program &program, const Command &command);

// "cmifctl [OPTIONS] sim VERB [ARGS]", for a command, a group or, with an empty path, the program.
std::string synopsis_of(const Program &program, const std::string &path);

// Upper case first, and a full stop.
std::string sentence(const std::string &text);

} // namespace cli

#endif
