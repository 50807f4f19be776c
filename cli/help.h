// Help, from the tables.
#ifndef CLI_HELP_H
#define CLI_HELP_H

#include "table.h"

namespace cli
{

// Of a command, of a group, or of everything when `path` is empty.
std::string help_text(const Program &program, const std::string &path);

// For a program that is called without arguments.
std::string short_help(const Program &program);

} // namespace cli

#endif
