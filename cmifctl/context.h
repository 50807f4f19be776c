// What a verb gets: the arguments as typed and checked, the options, and a report to fill.
#ifndef CMIFCTL_CONTEXT_H
#define CMIFCTL_CONTEXT_H

#include "client/call.h"
#include "cmifctl/output/enums.h"
#include "cmifctl/output/report.h"

#include <map>
#include <optional>
#include <string>

namespace cmifctl
{

class Arguments
{
public:
    void set(const std::string &name, std::string value) { values_[name] = std::move(value); }

    bool has(const std::string &name) const { return values_.contains(name); }
    // "" when not given.
    std::string text(const std::string &name) const;
    std::optional<std::string> given(const std::string &name) const;
    // Of an argument with a table of choices, whose text has been checked against it.
    int code(const std::string &name, Names names) const;
    // A whole number in the range; fails with exit 2 otherwise, calling it as the help does.
    int number(const std::string &name, const char *label, int least, int most) const;

private:
    std::map<std::string, std::string> values_;
};

struct Invocation {
    Options options;
    Arguments arguments;
    Report report;
};

// An AT request, with its outputs. Fails unless the AT daemon has made its queue, and when the
// result isn't 0.
Json ask_at(const Invocation &run, const Call &call);
// The same for a request without texts and outputs.
void ask_plain(const Invocation &run, const char *name, long code, int (*function)());
// As ask_at, but hands over the daemon's own codes.
Answer try_at(const Invocation &run, const Call &call);
// A QMI call; fails when the result isn't 0.
Json ask_qmi(const Invocation &run, const Call &call);

} // namespace cmifctl

#endif
