// What is wrong with a command line. Words that may be secrets are not repeated.
#ifndef CLI_USAGE_ERROR_H
#define CLI_USAGE_ERROR_H

#include "line.h"

#include <stdexcept>

namespace cli
{

class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const std::string &message, std::string hint = {});

    const std::string &hint() const { return hint_; }

private:
    std::string hint_;
};

// `line` is what has been understood so far.
[[noreturn]] void fail_unknown_option(const Line &line, const std::string &word);
[[noreturn]] void fail_unknown_command(const Line &line, const std::string &word);
[[noreturn]] void fail_missing_command(const Line &line);

[[noreturn]] void fail_unexpected_argument(const Line &line, const std::string &word);
[[noreturn]] void fail_missing_argument(const Line &line, const Argument &argument);
[[noreturn]] void fail_choice(const Line &line, const Argument &argument, const std::string &text);

[[noreturn]] void fail_flag_value(const Argument &flag);
[[noreturn]] void fail_empty_value(const Argument &option);
[[noreturn]] void fail_missing_value(const Line &line, const Argument &option);
[[noreturn]] void fail_option_as_value(const Argument &option);
[[noreturn]] void fail_repeated(const Line &line, const Argument &option);
// `source` is an option or an environment variable.
[[noreturn]] void fail_seconds(const std::string &source, const std::string &text,
                               const std::string &range);
[[noreturn]] void fail_exclusive(const std::string &option, const std::string &other);

} // namespace cli

#endif
