// The command line as typed, turned into a verb's context.
#ifndef CMIFCTL_CLI_COMMAND_LINE_H
#define CMIFCTL_CLI_COMMAND_LINE_H

#include "commands.h"

namespace cmifctl
{

struct CommandLine {
    std::string path;                      // of the command, or as far as it was given
    const cli::Command *command = nullptr; // null for help or version
    bool help = false;
    Context context{};
};

// Fails with UsageError when the command line is invalid.
CommandLine parse(int count, const char *const *words);

// Whether JSON is asked for, even if the rest is invalid.
bool wants_json(int count, const char *const *words);

} // namespace cmifctl

#endif
