// Help, completion and manual, all generated from the command table.
#ifndef CMIFCTL_CLI_HELP_H
#define CMIFCTL_CLI_HELP_H

#include "cmifctl/context.h"

#include <string>

namespace cmifctl
{

// Of a command, of a group, or of everything when `path` is empty.
std::string help_text(const std::string &path);

// For `cmifctl` without arguments.
std::string short_help();

// For "bash" or "zsh".
std::string completion_script(const std::string &shell);

// Source of cmifctl(1).
std::string manual_page();

void print_completion(Context &context);
void print_manual(Context &context);

} // namespace cmifctl

#endif
