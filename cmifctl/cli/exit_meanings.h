// The exit statuses, as help and manual explain them.
#ifndef CMIFCTL_CLI_EXIT_MEANINGS_H
#define CMIFCTL_CLI_EXIT_MEANINGS_H

#include "cli/table.h"

namespace cmifctl
{

// clang-format off
// In the order of client::Exit.
constexpr cli::Term exit_meanings[] = {
    {"0", "done"},
    {"1", "another failure, given in the message"},
    {"2", "usage error, or input was needed without a terminal"},
    {"3", "no answer in time"},
    {"4", "refused by the daemon, whose error is in the message"},
    {"5", "invalid argument, missing setting, or only one attempt left without --force"},
    {"6", "a file is missing"},
    {"7", "a profile change is in progress"},
    {"8", "a daemon is not ready, or its queue is missing"},
};
// clang-format on

} // namespace cmifctl

#endif
