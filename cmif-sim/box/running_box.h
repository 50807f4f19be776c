// What another program, in the box or outside it, does to a running router.
#ifndef CMIF_SIM_BOX_RUNNING_BOX_H
#define CMIF_SIM_BOX_RUNNING_BOX_H

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace cmif_sim
{

using ChosenBox = std::optional<pid_t>;

// All return an exit status, and throw std::exception if the router can't be reached.

// Has the words, as one command line, or the lines of standard input carried out: 1 if one fails, 2
// if one is wrong; then none is carried out.
int control(ChosenBox chosen, const std::vector<std::string> &words);

// Prints what runs, and what has been armed.
int print_status(ChosenBox chosen, bool json);

// Runs `command`, a shell if it is empty, beside the running router.
int enter(ChosenBox chosen, const std::vector<std::string> &command);

} // namespace cmif_sim

#endif
