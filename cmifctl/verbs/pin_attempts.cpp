#include "pin_attempts.h"

#include "client/result.h"
#include "daemons/cme_error.h"
#include "sim_snapshot.h"

namespace cmifctl
{
namespace
{

using daemons::CmeError;

// With --force an attempt is made without the counters, too.
SimSnapshot inspect_if_possible(const Context &context)
try {
    return inspect_sim(context);
} catch (const Failure &failure) {
    if (failure.status() != Exit::other)
        throw;
    return {};
}

// `puk_left`: null when it is not known.
std::string advice(const Attempt &attempt, bool none_left, const Json &puk_left)
{
    if (std::string_view(attempt.counter) == "pin1" && !(none_left && puk_left == 0))
        return none_left ? "The PIN is blocked: unblock it with 'cmifctl sim enter-puk'."
                         : "After the last wrong PIN, the SIM must be unblocked with its PUK.";
    return none_left ? "The SIM is permanently blocked; ask the operator for another."
                     : "After the last wrong PUK, the SIM is permanently blocked.";
}

Json attempts(const Json &before, const Json &after)
{
    return {{"attempts", {{"before", before}, {"after", after}}}};
}

void check_counter(const Attempt &attempt, const SimSnapshot &snapshot, bool forced)
{
    const std::string secret = attempt.secret;
    const Json left = snapshot.left(attempt.counter);
    const Json puk_left = snapshot.left("puk1");
    if (left.is_null() && !forced)
        throw Failure(Exit::other, "the attempts left for the " + secret + " are not known",
                      std::string(unknown_counters_hint) + " Use --force to try anyway.",
                      attempts(left, left));
    if (left == 0)
        throw Failure(Exit::invalid, "no attempts left for the " + secret,
                      advice(attempt, true, puk_left), attempts(left, left));
    if (left == 1 && !forced)
        throw Failure(Exit::invalid, "only one attempt left for the " + secret,
                      advice(attempt, false, puk_left) + " Use --force to try anyway.",
                      attempts(left, left));
}

std::string hint_without_question(const SimSnapshot &snapshot, const std::string &secret)
{
    if (snapshot.status == "PH-NET PIN")
        return client::daemon_error_hint(static_cast<int>(CmeError::network_pin_required), "");
    if (snapshot.status == "SIM FAILURE")
        return client::daemon_error_hint(static_cast<int>(CmeError::sim_failure), "");
    return "Use --force to try anyway: a wrong " + secret + " uses up an attempt.";
}

// A secret that the SIM has not asked for costs an attempt when it is wrong, and gains nothing.
void check_asked(const Attempt &attempt, const SimSnapshot &snapshot, bool forced)
{
    const std::string_view asked_when = attempt.asked_when;
    if (forced || asked_when.empty() || snapshot.status == asked_when)
        return;
    const std::string secret = attempt.secret;
    const bool known = !snapshot.status.empty();
    const Json left = snapshot.left(attempt.counter);
    throw Failure(known ? Exit::invalid : Exit::other,
                  known ? "the SIM does not ask for its " + secret + " (" + snapshot.status + ")"
                        : "the state of the SIM is not known",
                  hint_without_question(snapshot, secret), attempts(left, left));
}

Json check_attempt(const Context &context, const Attempt &attempt)
{
    const bool forced = context.arguments.has("force");
    const SimSnapshot snapshot = forced ? inspect_if_possible(context) : inspect_sim(context);
    check_counter(attempt, snapshot, forced);
    check_asked(attempt, snapshot, forced);
    return snapshot.left(attempt.counter);
}

// The attempts left after an attempt; null when they can no longer be read.
Json counter_after(const Context &context, const char *counter)
{
    try {
        return inspect_sim(context).left(counter);
    } catch (const Failure &) {
        return nullptr;
    }
}

enum class Verdict { accepted, wrong, not_checked, contradicted };

// Only a wrong answer lowers the counter, and a wrong answer always does.
Verdict judge(int result, const Json &before, const Json &after)
{
    const bool known = before.is_number() && after.is_number();
    const bool lowered = known && after < before;
    if (result == CMIF_OK)
        return lowered ? Verdict::contradicted : Verdict::accepted;
    if (lowered)
        return Verdict::wrong;
    if (result != static_cast<int>(CmeError::incorrect_password))
        return Verdict::not_checked;
    return known ? Verdict::contradicted : Verdict::wrong;
}

std::string verdict_text(Verdict verdict, const std::string &secret)
{
    switch (verdict) {
    case Verdict::wrong:
        return "wrong " + secret;
    case Verdict::contradicted:
        return "the answer for the " + secret + " contradicts the counters and can't be trusted";
    case Verdict::accepted:
    case Verdict::not_checked:
        break;
    }
    return "the " + secret + " was not checked";
}

std::string number_text(const Json &number)
{
    return number.is_null() ? "unknown" : number.dump();
}

[[noreturn]] void fail_attempt(const Attempt &attempt, Verdict verdict, int result,
                               const Json &before, const Json &after)
{
    std::string hint = client::daemon_error_hint(result, attempt.request.name);
    if (verdict == Verdict::wrong)
        hint = advice(attempt, after == 0, Json());
    if (verdict == Verdict::contradicted)
        hint = "'cmifctl sim status' shows the state of the SIM.";
    Json details{{"daemon", client::daemon_error(result)}};
    details.update(attempts(before, after));
    throw Failure(verdict == Verdict::contradicted ? Exit::other : Exit::refused,
                  verdict_text(verdict, attempt.secret) + ": " + client::daemon_error_text(result) +
                      "; attempts left: " + number_text(after) + ", before: " + number_text(before),
                  hint, details);
}

// For the calls of one scope.
class SimLock
{
public:
    explicit SimLock(Context &context)
        : context_(context), lock_(client::lock_codes(context.options, codes()))
    {
        context_.options.lock = &lock_;
    }
    ~SimLock() { context_.options.lock = nullptr; }
    SimLock(const SimLock &) = delete;
    SimLock &operator=(const SimLock &) = delete;

private:
    // All that read or lower the counters.
    static std::vector<client::RequestCode> codes()
    {
        std::vector<client::RequestCode> all;
        for (const long code : {CMIF_AT_GET_PIN_COUNTERS, CMIF_AT_SET_PIN_MODE, CMIF_AT_ENTER_PIN,
                                CMIF_AT_CHANGE_PIN, CMIF_AT_ENTER_PUK})
            all.push_back({client::Channel::at, code});
        return all;
    }

    Context &context_;
    client::CodeLock lock_;
};

} // namespace

void make_attempt(Context &context, const Attempt &attempt)
{
    check_attempt(context, attempt);
    const std::vector<std::string> secrets =
        ask_for(attempt.secrets, context.arguments.has("source"));

    const SimLock lock(context);
    const Json before = check_attempt(context, attempt);
    const int result = at_call_raw(context, {.request = attempt.request,
                                             .body = [&](Json &) { return attempt.call(secrets); },
                                             .secret = true})
                           .result;
    const Json after = counter_after(context, attempt.counter);
    const Verdict verdict = judge(result, before, after);
    if (verdict != Verdict::accepted)
        fail_attempt(attempt, verdict, result, before, after);
    context.report.result(attempt.result, attempt.done);
    context.report.field("attempts", {"before", before});
    context.report.field("attempts", {"after", after});
}

} // namespace cmifctl
