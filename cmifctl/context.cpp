#include "context.h"

#include "client/result.h"
#include "cmifctl/output/text.h"

namespace cmifctl
{

std::string Arguments::text(const std::string &name) const
{
    return given(name).value_or("");
}

std::optional<std::string> Arguments::given(const std::string &name) const
{
    const auto found = values_.find(name);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

int Arguments::code(const std::string &name, Names names) const
{
    if (const std::optional<int> code = code_of(names, text(name)))
        return *code;
    throw Failure(Exit::usage, "'" + text(name) + "' is no " + name, "One of " + choices(names));
}

int Arguments::number(const std::string &name, const char *label, int least, int most) const
{
    const std::optional<long long> number = whole_number(text(name));
    if (number && *number >= least && *number <= most)
        return static_cast<int>(*number);
    throw Failure(Exit::usage, std::string(label) + " takes a whole number from " +
                                   std::to_string(least) + " to " + std::to_string(most) +
                                   ", not '" + text(name) + "'");
}

Answer try_at(const Invocation &run, const Call &call)
{
    // The library would make the queue and wait for a daemon that isn't there.
    if (!queue_exists(Channel::at))
        throw Failure(Exit::not_ready,
                      std::string(call.request.name) + ": the AT daemon has not made its queue",
                      "Start the AT daemon, then try again.");
    Answer answer = cmifctl::call(run.options, call);
    if (channel_failed(answer.result))
        check_at(call.request.name, answer.result);
    return answer;
}

Json ask_at(const Invocation &run, const Call &call)
{
    Answer answer = try_at(run, call);
    check_at(call.request.name, answer.result);
    return answer.output;
}

void ask_plain(const Invocation &run, const char *name, long code, int (*function)())
{
    ask_at(run,
           {.request = at_request(name, code), .body = [function](Json &) { return function(); }});
}

Json ask_qmi(const Invocation &run, const Call &call)
{
    Answer answer = cmifctl::call(run.options, call);
    check_qmi(call.request.name, answer.result);
    return answer.output;
}

} // namespace cmifctl
