// What a program prints about itself: help, version, manual page, completion.
#ifndef CLI_ABOUT_H
#define CLI_ABOUT_H

#include "line.h"

#include <optional>
#include <string>

namespace cli
{

// The text that the tables alone give for the line; nothing for a command of the program's own.
std::optional<std::string> about(const Line &line);

// Prints on standard output. The exit status: 0, or 1 with a message when that fails.
int print(const Program &program, const std::string &text);

} // namespace cli

#endif
