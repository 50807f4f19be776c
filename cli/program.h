// The frame of a program whose command line is a table.
#ifndef CLI_PROGRAM_H
#define CLI_PROGRAM_H

#include "line.h"

#include <functional>

namespace cli
{

// Does `work` with the command line, unless it asks for what the tables tell. Returns the exit
// status: that of `work`, 2 with a message for a line that the tables do not have or that `work`
// refuses with a UsageError, 1 with a message for any other exception.
int run_program(const Program &program, int count, char **words,
                const std::function<int(const Line &line)> &work);

} // namespace cli

#endif
