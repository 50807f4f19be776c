#include "calls.h"

#include "client/queues.h"
#include "client/result.h"

namespace cmifctl
{

Answer at_call_raw(const Context &context, const Call &call)
{
    // The library would create the queue and wait for a daemon that isn't running.
    if (!client::queue_exists(client::Channel::at))
        throw Failure(Exit::not_ready,
                      std::string(call.request.name) + ": the AT daemon has not created its queue",
                      "Start the AT daemon, then try again.");
    Answer answer = client::call(context.options, call);
    if (!answer.answered)
        client::check_at(call.request.name, answer.result, false);
    return answer;
}

Json at_call(const Context &context, const Call &call)
{
    Answer answer = at_call_raw(context, call);
    client::check_at(call.request.name, answer.result, answer.answered);
    return answer.output;
}

void at_command(const Context &context, const char *name, cmif_at_code code, int (*function)())
{
    at_call(context,
            {.request = at_request(name, code), .body = [function](Json &) { return function(); }});
}

Json qmi_call(const Context &context, const Call &call)
{
    Answer answer = client::call(context.options, call);
    client::check_qmi(call.request.name, answer.result);
    return answer.output;
}

Json read(const Context &context, const char *name, const Body &body)
{
    return client::call(context.options, {.request = no_request(name), .body = body}).output;
}

Json text_or_null(const std::string &text)
{
    return text.empty() ? Json() : Json(text);
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
