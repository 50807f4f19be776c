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

// Parts of the messages.
std::string quoted(const std::string &text);
std::string dashed(const Argument &option);
std::string see_help(const Line &line, const std::string &what);

} // namespace cli

#endif
