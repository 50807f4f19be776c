// What a program prints about itself: help, version, manual page, completion.
#ifndef CLI_ABOUT_H
#define CLI_ABOUT_H

#include "completion.h"
#include "line.h"

#include <optional>
#include <string>

namespace cli
{

// The commands for it that a program's table has, and the options of every command.
constexpr Command completion_command{"completion", "print a completion script", Access::acts,
                                     "bash", shell_arguments};
constexpr Command manual_command{"manual", "print the manual page, for man -l -", Access::acts, ""};
constexpr Command complete_command{"complete", "list what may follow on a command line, for shells",
                                   Access::acts, "-- man", complete_arguments};
constexpr Argument about_options[] = {help_option, version_option};

// The text that the tables alone give for the line; nothing for a command of the program's own.
std::optional<std::string> about(const Line &line);

// Prints on standard output. The exit status: 0, or 1 with a message when that fails.
int print(const Program &program, const std::string &text);

} // namespace cli

#endif
