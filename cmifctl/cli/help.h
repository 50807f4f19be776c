// Help, completion and manual, all written from the command table.
#ifndef CMIFCTL_CLI_HELP_H
#define CMIFCTL_CLI_HELP_H

#include "cmifctl/context.h"

#include <string>

namespace cmifctl
{

// Of a command, of a group, or of everything ("").
std::string help_text(const std::string &path);

// What `cmifctl` alone answers.
std::string short_help();

// "bash" or "zsh"
std::string completion_script(const std::string &shell);

// Source of cmifctl(1).
std::string manual_page();

void print_completion(Invocation &run);
void print_manual(Invocation &run);

} // namespace cmifctl

#endif
