// The arguments of a command as typed.
#ifndef CLI_ARGUMENTS_H
#define CLI_ARGUMENTS_H

#include "choices.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace cli
{

class Arguments
{
public:
    void add(const std::string &name, const std::string &value) { values_[name].push_back(value); }

    bool empty() const { return values_.empty(); }
    bool has(const std::string &name) const { return values_.contains(name); }
    // Empty when not given.
    std::string text(const std::string &name) const;
    // The last one, of what is given several times.
    std::optional<std::string> given(const std::string &name) const;
    std::vector<std::string> all(const std::string &name) const;

    // Of an argument whose text has been checked against the table.
    int code(const std::string &name, Choices choices) const;
    // A whole number from min to max. Fails otherwise; `label` names the argument.
    long long number(const std::string &name, const char *label, long long min,
                     long long max) const;

private:
    std::map<std::string, std::vector<std::string>> values_;
};

} // namespace cli

#endif
