// The command line as typed, turned into a command and what it gets.
#ifndef CMIFCTL_CLI_COMMAND_LINE_H
#define CMIFCTL_CLI_COMMAND_LINE_H

#include "commands.h"

namespace cmifctl
{

struct CommandLine {
    std::string path;                 // as far as it was understood
    const Command *command = nullptr; // null when help or version is asked for
    bool help = false;
    bool version = false;
    Invocation run;
};

// Fails with exit 2 when it can't be understood; the hint names near matches.
CommandLine parse(int count, const char *const *words);

// Whether --json is there, however wrong the rest.
bool wants_json(int count, const char *const *words);

// The candidates that `word` may have been meant for.
std::vector<std::string> near_matches(std::string_view word,
                                      const std::vector<std::string> &candidates);

} // namespace cmifctl

#endif
