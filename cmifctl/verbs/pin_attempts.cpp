#include "pin_attempts.h"

#include "client/result.h"
#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"

#include <array>

namespace cmifctl
{

namespace
{

constexpr int incorrect_password = 16;

// The tries that are left after an attempt; null when that can't be learned any more.
Json counter_after(const Invocation &run, const char *counter)
{
    try {
        return retry_counters(run)[counter];
    } catch (const Failure &) {
        return nullptr;
    }
}

std::string advice(const std::string &counter, bool none_left)
{
    if (counter == "pin1")
        return none_left ? "The PIN is blocked: unblock it with 'cmifctl sim enter-puk'."
                         : "After the last wrong PIN only the PUK helps.";
    return none_left ? "The SIM is blocked for good; ask the operator for another."
                     : "After the last wrong PUK the SIM is lost.";
}

[[noreturn]] void fail_attempt(const Attempt &attempt, int result, const Json &before,
                               const Json &after)
{
    const Refusal *known = refusal(result);
    const bool wrong =
        result == incorrect_password || (after.is_number() && before.is_number() && after < before);
    std::string message = wrong ? std::string("wrong ") + attempt.secret
                                : std::string("the ") + attempt.secret + " was not judged";
    message += ": " + refusal_text(result) + "; tries left: " + after.dump() +
               ", before: " + before.dump();
    const std::string hint = wrong ? advice(attempt.counter, after == 0)
                                   : std::string(known != nullptr ? known->hint : "");
    throw Failure(
        Exit::refused, message, hint,
        {{"daemon", {{"code", result}, {"name", known != nullptr ? Json(known->name) : Json()}}},
         {"tries", {{"before", before}, {"after", after}}}});
}

} // namespace

Json retry_counters(const Invocation &run)
{
    return ask_at(
        run,
        {.request = at_request("shared_CMIF_get_mobilePINPUKC", 4), .body = [](Json &output) {
             std::array<int, 4> left{};
             const int result = shared_CMIF_get_mobilePINPUKC(left.data());
             output = {{"pin1", left[0]}, {"puk1", left[1]}, {"pin2", left[2]}, {"puk2", left[3]}};
             return result;
         }});
}

Json require_tries(const Invocation &run, const char *counter, const char *secret)
{
    Json left = retry_counters(run)[counter];
    const Json details{{"tries", {{"before", left}, {"after", left}}}};
    if (left <= 0)
        throw Failure(Exit::invalid, std::string("no try is left for the ") + secret,
                      advice(counter, true), details);
    if (left == 1 && !run.arguments.has("force"))
        throw Failure(Exit::invalid, std::string("one try is left for the ") + secret,
                      advice(counter, false) + " --force tries all the same.", details);
    return left;
}

void attempt(Invocation &run, const Json &before, const Attempt &attempt)
{
    const int result = try_at(run, attempt.call).result;
    const Json after = counter_after(run, attempt.counter);
    if (result != CMIF_OK)
        fail_attempt(attempt, result, before, after);
    run.report.field("sim", {"result", attempt.done});
    run.report.field("sim", {"tries_before", before});
    run.report.field("sim", {"tries_after", after});
}

} // namespace cmifctl
