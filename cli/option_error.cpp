#include "option_error.h"

namespace cli
{

void fail_not_reading(const Line &line, const Argument &option)
{
    throw UsageError(dashed(option) + " is for commands that only read, not for " +
                         quoted(line.full_path()),
                     "Leave " + dashed(option) + " out.");
}

void fail_flag_value(const Argument &flag)
{
    throw UsageError(dashed(flag) + " takes no value", "Give " + dashed(flag) + " alone.");
}

void fail_empty_value(const Argument &option)
{
    throw UsageError(dashed(option) + "= has no value",
                     option.kind == Argument::Kind::flag
                         ? "Leave the = out, or give a value."
                         : "Give the value as the next word; '' is an empty one.");
}

void fail_missing_value(const Line &line, const Argument &option)
{
    throw UsageError(dashed(option) + " needs a value", see_help(line, "shows its usage"));
}

void fail_option_as_value(const Argument &option)
{
    throw UsageError(dashed(option) + " needs a value, not another option",
                     "Write " + dashed(option) + "=VALUE for a value that begins with --.");
}

void fail_repeated(const Line &line, const Argument &option)
{
    throw UsageError(dashed(option) + " is given more than once",
                     see_help(line, "shows its usage"));
}

void fail_seconds(const std::string &source, const std::string &text, const std::string &range)
{
    throw UsageError("invalid " + source + " " + quoted(text), range);
}

void fail_exclusive(const std::string &option, const std::string &other)
{
    throw UsageError(option + " and " + other + " exclude each other", "Give one of them.");
}

} // namespace cli
