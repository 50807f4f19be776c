#include "arguments.h"

#include "numbers.h"
#include "usage_error.h"

namespace cli
{

std::string Arguments::text(const std::string &name) const
{
    return given(name).value_or("");
}

std::optional<std::string> Arguments::given(const std::string &name) const
{
    const auto found = values_.find(name);
    return found == values_.end() ? std::nullopt : std::optional(found->second.back());
}

std::vector<std::string> Arguments::all(const std::string &name) const
{
    const auto found = values_.find(name);
    return found == values_.end() ? std::vector<std::string>() : found->second;
}

int Arguments::code(const std::string &name, Choices choices) const
{
    if (const std::optional<int> code = code_of(choices, text(name)))
        return *code;
    throw UsageError("invalid " + name + " '" + text(name) + "'",
                     "One of: " + list_of(choices) + ".");
}

long long Arguments::number(const std::string &name, const char *label, long long min,
                            long long max) const
{
    const std::optional<long long> number = whole_number(text(name));
    if (number && *number >= min && *number <= max)
        return *number;
    throw UsageError(std::string("invalid ") + label + " '" + text(name) + "'",
                     "A whole number from " + std::to_string(min) + " to " + std::to_string(max) +
                         ".");
}

} // namespace cli
