// The options of every command, from their texts to what the program does.
#ifndef CMIFCTL_CLI_GLOBAL_OPTIONS_H
#define CMIFCTL_CLI_GLOBAL_OPTIONS_H

#include "cmifctl/context.h"

namespace cmifctl
{

// Fails with exit 2 when a value is invalid. For a command that makes calls, the environment gives
// what `given` lacks.
void take_global_options(const Arguments &given, bool makes_calls, Context &context);

} // namespace cmifctl

#endif
