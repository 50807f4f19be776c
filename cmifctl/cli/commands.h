// The command table of cmifctl.
#ifndef CMIFCTL_CLI_COMMANDS_H
#define CMIFCTL_CLI_COMMANDS_H

#include "cli/table.h"
#include "cmifctl/context.h"

namespace cmifctl
{

struct Verb {
    void (*run)(Context &);
    cli::Command command;
};

const cli::Program &tables();

// Runs the verb of a path of the table.
void run(const std::string &path, Context &context);

} // namespace cmifctl

#endif
