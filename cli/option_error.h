// What is wrong with an option and its value.
#ifndef CLI_OPTION_ERROR_H
#define CLI_OPTION_ERROR_H

#include "usage_error.h"

namespace cli
{

[[noreturn]] void fail_not_reading(const Line &line, const Argument &option);
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
