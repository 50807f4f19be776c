#include "connection.h"

#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"
#include "connection_reason.h"
#include "store.h"

#include <chrono>
#include <thread>

namespace cmifctl
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr auto poll_interval = std::chrono::milliseconds(200);
// Seconds for which a daemon that has accepted a request may still publish the old state.
constexpr double grace_period = 2;

enum State { disconnected = 1, connected = 3 };

struct Transition {
    Call call;
    int from;
    int to;
    const char *progress;
};

Transition transition_to(Target target)
{
    if (target == Target::connected)
        return {{.request = qmi_request("shared_CMIF_start_network_interface", CMIF_QMI_START),
                 .body = in_daemons_store(
                     [](Json &) { return shared_CMIF_start_network_interface(); })},
                disconnected,
                connected,
                "connecting"};
    return {{.request = qmi_request("shared_CMIF_stop_network_interface", CMIF_QMI_STOP),
             .body = in_daemons_store([](Json &) { return shared_CMIF_stop_network_interface(); })},
            connected,
            disconnected,
            "disconnecting"};
}

double seconds_since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

std::string state_text(int state)
{
    if (state == profile_change)
        return "a profile change is in progress";
    return enumeration_text(enums::connection, state);
}

void show_state(const Transition &transition, int state, Clock::time_point started)
{
    const auto seconds = static_cast<long>(seconds_since(started));
    show_progress(std::string(transition.progress) + ", " + std::to_string(seconds) + " s (" +
                  state_text(state) + ")");
}

[[noreturn]] void fail_still(const Context &context, int state)
{
    const Reason reason = connection_reason(context);
    throw Failure(Exit::refused,
                  "the connection is still " + state_text(state) + ": " + reason.text, reason.hint);
}

// The state that the daemon publishes can't be read while the marker exists.
[[noreturn]] void fail_hidden(int target)
{
    throw Failure(Exit::profile_busy,
                  std::string("the daemon has accepted the request; whether the connection is ") +
                      state_text(target) + " can't be read while " CMIF_PROFILE_BUSY_FILE " exists",
                  "It marks a change of the profile: 'cmifctl doctor --fix' removes it if no "
                  "process works on one. Then 'cmifctl data status' shows the state.");
}

[[noreturn]] void fail_late(int state, int target)
{
    if (state == profile_change)
        fail_hidden(target);
    throw Failure(Exit::no_answer,
                  "the connection is not " + state_text(target) + " in time: " + state_text(state),
                  "The daemon continues; 'cmifctl data status' shows the state. --timeout SECONDS "
                  "waits longer.");
}

} // namespace

int connection_state(const Context &context)
{
    const Answer answer =
        client::call(context.options, {.request = no_request("shared_CMIF_get_connection_status"),
                                       .body = reads(shared_CMIF_get_connection_status)});
    return answer.result == CMIF_PROFILE_BUSY ? profile_change : answer.output.get<int>();
}

void request(const Context &context, Target target)
{
    qmi_call(context, transition_to(target).call);
}

void drive_to(const Context &context, Target target)
{
    Transition transition = transition_to(target);
    const Clock::time_point started = Clock::now();
    transition.call.on_wait = [&] { show_state(transition, connection_state(context), started); };
    qmi_call(context, transition.call);

    const Clock::time_point accepted = Clock::now();
    const double timeout = context.options.timeout.value_or(client::default_timeout);
    for (;;) {
        const int state = connection_state(context);
        if (state == transition.to)
            break;
        show_state(transition, state, started);
        const bool late = timeout > 0 && seconds_since(started) > timeout;
        const bool unchanged = state == transition.from && seconds_since(accepted) > grace_period;
        const bool failed = target == Target::connected && !last_error(context).empty();
        if (unchanged || (late && failed && state != profile_change))
            fail_still(context, state);
        if (late)
            fail_late(state, transition.to);
        std::this_thread::sleep_for(poll_interval);
    }
    clear_progress();
}

} // namespace cmifctl
