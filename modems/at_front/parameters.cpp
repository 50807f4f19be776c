#include "parameters.h"

#include "daemons/digits.h"

#include <utility>

namespace at_front
{

std::optional<Parameters> Parameters::parse(std::string_view text)
{
    Parameters parsed;
    if (text.empty())
        return parsed;
    std::optional<std::string> value;
    bool quoted = false;
    for (const char c : text) {
        if (c == ',' && !quoted) {
            parsed.values_.push_back(std::exchange(value, std::nullopt));
            continue;
        }
        if (c == '"')
            quoted = !quoted;
        if (!value)
            value.emplace();
        if (c != '"')
            *value += c;
    }
    parsed.values_.push_back(value);
    if (quoted)
        return std::nullopt;
    return parsed;
}

std::optional<int> Parameters::number(std::size_t index) const
{
    return has(index) ? daemons::to_number(*values_[index]) : std::nullopt;
}

std::optional<int> Parameters::number(std::size_t index, int otherwise) const
{
    return has(index) ? number(index) : otherwise;
}

std::optional<int> Parameters::number(std::size_t index, int otherwise, int min, int max) const
{
    const std::optional<int> value = number(index, otherwise);
    return value && *value >= min && *value <= max ? value : std::nullopt;
}

} // namespace at_front
