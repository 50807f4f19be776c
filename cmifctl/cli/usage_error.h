// What is wrong with a command line: each throws a Failure with exit 2. Words that may be secrets
// are not repeated.
#ifndef CMIFCTL_CLI_USAGE_ERROR_H
#define CMIFCTL_CLI_USAGE_ERROR_H

#include "commands.h"

namespace cmifctl
{

// `command` is null where no command has been given yet.
[[noreturn]] void fail_unknown_option(const std::string &path, const Command *command,
                                      const std::string &option);
[[noreturn]] void fail_unknown_command(const std::string &path, const std::string &word);
[[noreturn]] void fail_missing_command(const std::string &path);

[[noreturn]] void fail_unexpected_argument(const Command &command, const std::string &word);
[[noreturn]] void fail_missing_argument(const Command &command, const Argument &argument);
[[noreturn]] void fail_choice(const Command &command, const Argument &argument,
                              const std::string &text);

// Of an option as typed, "--timeout".
[[noreturn]] void fail_flag_value(const std::string &option);
[[noreturn]] void fail_empty_value(const std::string &option);
[[noreturn]] void fail_missing_value(const std::string &option);
[[noreturn]] void fail_option_as_value(const std::string &option);
[[noreturn]] void fail_repeated(const std::string &option);
[[noreturn]] void fail_timeout(const std::string &text);

} // namespace cmifctl

#endif
