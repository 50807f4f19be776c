#include "pin_attempts.h"

#include "client/result.h"
#include "cmif/cmif.h"
#include "daemons/cme_error.h"

#include <array>

namespace cmifctl
{
namespace
{

// The attempts left after an attempt; null when they can no longer be read.
Json counter_after(const Context &context, const char *counter)
{
    try {
        return retry_counters(context)[counter];
    } catch (const Failure &) {
        return nullptr;
    }
}

std::string advice(const std::string &counter, bool none_left)
{
    if (counter == "pin1")
        return none_left ? "The PIN is blocked: unblock it with 'cmifctl sim enter-puk'."
                         : "After the last wrong PIN, the SIM must be unblocked with its PUK.";
    return none_left ? "The SIM is permanently blocked; ask the operator for another."
                     : "After the last wrong PUK, the SIM is permanently blocked.";
}

bool is_wrong(int result, const Json &before, const Json &after)
{
    return result == static_cast<int>(daemons::CmeError::incorrect_password) ||
           (after.is_number() && before.is_number() && after < before);
}

[[noreturn]] void fail_attempt(const Attempt &attempt, int result, const Json &before,
                               const Json &after)
{
    const bool wrong = is_wrong(result, before, after);
    const std::string secret = attempt.secret;
    throw Failure(Exit::refused,
                  (wrong ? "wrong " + secret : "the " + secret + " was not checked") + ": " +
                      client::daemon_error_text(result) + "; attempts left: " + after.dump() +
                      ", before: " + before.dump(),
                  wrong ? advice(attempt.counter, after == 0) : client::daemon_error_hint(result),
                  {{"daemon", client::daemon_error(result)},
                   {"tries", {{"before", before}, {"after", after}}}});
}

} // namespace

Json retry_counters(const Context &context)
{
    return at_call(
        context,
        {.request = at_request("shared_CMIF_get_mobilePINPUKC", CMIF_AT_GET_PIN_COUNTERS),
         .body = [](Json &output) {
             std::array<int, 4> left{};
             const int result = shared_CMIF_get_mobilePINPUKC(left.data());
             output = {{"pin1", left[0]}, {"puk1", left[1]}, {"pin2", left[2]}, {"puk2", left[3]}};
             return result;
         }});
}

Json check_retry_counter(const Context &context, const char *counter, const char *secret)
{
    Json left = retry_counters(context)[counter];
    const Json details{{"tries", {{"before", left}, {"after", left}}}};
    if (left <= 0)
        throw Failure(Exit::invalid, std::string("no attempts left for the ") + secret,
                      advice(counter, true), details);
    if (left == 1 && !context.arguments.has("force"))
        throw Failure(Exit::invalid, std::string("only one attempt left for the ") + secret,
                      advice(counter, false) + " Use --force to try anyway.", details);
    return left;
}

void make_attempt(Context &context, const Json &before, const Attempt &attempt)
{
    const int result = at_call_raw(context, attempt.call).result;
    const Json after = counter_after(context, attempt.counter);
    if (result != CMIF_OK)
        fail_attempt(attempt, result, before, after);
    context.report.field("sim", {"result", attempt.done});
    context.report.field("sim",
                         {.key = "tries_before", .value = before, .label = "attempts before"});
    context.report.field("sim", {.key = "tries_after", .value = after, .label = "attempts after"});
}

} // namespace cmifctl
