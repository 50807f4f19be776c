// Calls of the library as the verbs make them: each fails unless its result is 0.
#ifndef CMIFCTL_CALLS_H
#define CMIFCTL_CALLS_H

#include "context.h"

namespace cmifctl
{

using client::Answer;
using client::at_request;
using client::Body;
using client::Call;
using client::no_request;
using client::qmi_request;
using client::Request;

// Seconds.
constexpr double search_timeout = 180;
constexpr double status_timeout = 3; // of readings that are left out when there is no answer

// An AT request and its outputs. Fails when the AT daemon has not created its request queue.
Json at_call(const Context &context, const Call &call);
// The same, but a daemon's own error is returned as the result.
Answer at_call_raw(const Context &context, const Call &call);
// An AT request without texts and outputs.
void at_command(const Context &context, const char *name, cmif_at_code code, int (*function)());

Json qmi_call(const Context &context, const Call &call);

// The outputs of a call that asks no daemon, whatever its result.
Json read(const Context &context, const char *name, const Body &body);

// A body for a getter with one number as its output.
template <class Number>
Body reads(int (*getter)(Number *))
{
    return [getter](Json &output) {
        Number number{};
        const int result = getter(&number);
        output = number;
        return result;
    };
}

// Null for an empty text, which stands for an unknown one.
Json text_or_null(const std::string &text);

// Fails with exit 5 when the text does not fit the request's field.
void check_length(const char *label, const std::string &text, std::size_t max);

} // namespace cmifctl

#endif
