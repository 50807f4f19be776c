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
// A value that isn't one of an option's choices.
[[noreturn]] void fail_option_choice(const Argument &option, const std::string &text);
// `source` is an option or an environment variable.
[[noreturn]] void fail_seconds(const std::string &source, const std::string &text,
                               const std::string &range);
[[noreturn]] void fail_exclusive(const std::string &option, const std::string &other);
// Of a command that does more than read.
[[noreturn]] void fail_not_reading(const Command &command, const std::string &option);

} // namespace cmifctl

#endif
