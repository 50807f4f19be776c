// The command line as typed, turned into a command and its context.
#ifndef CMIFCTL_CLI_COMMAND_LINE_H
#define CMIFCTL_CLI_COMMAND_LINE_H

#include "commands.h"

namespace cmifctl
{

struct CommandLine {
    std::string path;                 // of the command, or as far as it was given
    const Command *command = nullptr; // null for help or version
    bool help = false;
    bool version = false;
    Context context;
};

// Fails with exit 2 when the command line is invalid.
CommandLine parse(int count, const char *const *words);

// Whether --json is given, even if the rest is invalid.
bool wants_json(int count, const char *const *words);

} // namespace cmifctl

#endif
