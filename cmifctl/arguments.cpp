#include "arguments.h"

#include "cmifctl/output/numbers.h"

namespace cmifctl
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

int Arguments::code(const std::string &name, EnumTable table) const
{
    if (const std::optional<int> code = code_of(table, text(name)))
        return *code;
    throw Failure(Exit::usage, "invalid " + name + " '" + text(name) + "'",
                  "One of: " + choices(table, ", ") + ".");
}

int Arguments::number(const std::string &name, const char *label, int min, int max) const
{
    const std::optional<long long> number = whole_number(text(name));
    if (number && *number >= min && *number <= max)
        return static_cast<int>(*number);
    throw Failure(Exit::usage, std::string(label) + " takes a whole number from " +
                                   std::to_string(min) + " to " + std::to_string(max) + ", not '" +
                                   text(name) + "'");
}

void check_length(const char *label, const std::string &text, std::size_t max)
{
    if (text.size() > max)
        throw Failure(Exit::invalid,
                      std::string("the ") + label + " has " + std::to_string(text.size()) +
                          " bytes; nothing was sent",
                      std::string("At most ") + std::to_string(max) + " bytes.");
}

} // namespace cmifctl
