// Arguments and exit status as help and manual show them.
#ifndef CMIFCTL_CLI_ARGUMENT_TEXT_H
#define CMIFCTL_CLI_ARGUMENT_TEXT_H

#include "commands.h"

namespace cmifctl
{

// "--apn NAME", "-h, --help", "MODE", "[-]"
std::string usage_of(const Argument &argument);

// The help, and the choices when there are several.
std::string meaning_of(const Argument &argument);

// "cmifctl [OPTIONS] sim enter-pin [-] [--force]"
std::string synopsis_of(const Command &command);

struct ExitMeaning {
    Exit status;
    const char *meaning;
};

// clang-format off
constexpr ExitMeaning exit_meanings[] = {
    {Exit::done,         "done"},
    {Exit::other,        "another failure, given in the message"},
    {Exit::usage,        "usage error, or input was needed without a terminal"},
    {Exit::no_answer,    "no answer in time"},
    {Exit::refused,      "refused by the daemon, whose error is in the message"},
    {Exit::invalid,      "invalid argument, missing setting, or only one attempt left without --force"},
    {Exit::no_file,      "a file is missing"},
    {Exit::profile_busy, "a profile change is in progress"},
    {Exit::not_ready,    "a daemon is not ready, or its queue is missing"},
};
// clang-format on

} // namespace cmifctl

#endif
