// The arguments of a command as typed.
#ifndef CMIFCTL_ARGUMENTS_H
#define CMIFCTL_ARGUMENTS_H

#include "cmifctl/output/enums.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cmifctl
{

class Arguments
{
public:
    void set(const std::string &name, std::string value) { values_[name] = {std::move(value)}; }
    void add(const std::string &name, std::string value)
    {
        values_[name].push_back(std::move(value));
    }

    bool has(const std::string &name) const { return values_.contains(name); }
    // Empty when not given.
    std::string text(const std::string &name) const;
    std::optional<std::string> given(const std::string &name) const;
    // Of an option that can be repeated.
    std::vector<std::string> all(const std::string &name) const;
    // Of an argument whose text has been checked against the table.
    int code(const std::string &name, EnumTable table) const;
    // A whole number from min to max. Fails with exit 2 otherwise; `label` names the argument.
    int number(const std::string &name, const char *label, int min, int max) const;

private:
    std::map<std::string, std::vector<std::string>> values_;
};

// Fails with exit 5 when the text does not fit the request's field.
void check_length(const char *label, const std::string &text, std::size_t max);

} // namespace cmifctl

#endif
