#include "connection.h"

#include "cmif/cmif.h"
#include "cmifctl/output/terminal.h"
#include "qmi_readings.h"
#include "settings.h"

#include <chrono>
#include <thread>

namespace cmifctl
{

namespace
{

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr auto between_looks = std::chrono::milliseconds(200);
constexpr double grace = 2; // seconds for which a daemon that accepted may still show the old state

enum State { disconnected = 1, connected = 3 };

struct Plan {
    Call call;
    int from;
    int to;
    const char *doing;
};

Plan plan(Goal goal)
{
    if (goal == Goal::connected)
        return {{.request = qmi_request("shared_CMIF_start_network_interface", 4, 5),
                 .body = [](Json &) { return shared_CMIF_start_network_interface(); }},
                disconnected,
                connected,
                "connecting"};
    return {{.request = qmi_request("shared_CMIF_stop_network_interface", 5, 5),
             .body = [](Json &) { return shared_CMIF_stop_network_interface(); }},
            connected,
            disconnected,
            "disconnecting"};
}

std::string state_text(int state)
{
    if (state == profile_change)
        return "a profile change is in progress";
    return enumeration(names::connection, state)["name"];
}

// What a daemon that publishes one says; it has none while all is well.
std::string daemon_error(const Invocation &run)
{
    return setting(run, "lte_qmi_last_error");
}

// Why a connection doesn't come up, as far as SIM and network tell.
struct Reason {
    std::string text;
    std::string hint;
};

Reason reason(const Invocation &run)
{
    constexpr int ready = 2;
    constexpr int registered = 0;
    const Json sim = ask_qmi(run, sim_state_call());
    if (sim["code"] != ready)
        return {"the SIM's state is: " +
                    (sim["name"].is_null() ? sim["code"].dump() : sim["name"].get<std::string>()),
                "'cmifctl sim status' shows the SIM; 'cmifctl sim enter-pin' unlocks it."};
    const int registration =
        call(run.options, {.request = no_request("shared_CMIF_get_mobileNetworkStatus"),
                           .body =
                               [](Json &output) {
                                   int status = registered;
                                   const int result = shared_CMIF_get_mobileNetworkStatus(&status);
                                   output = status;
                                   return result;
                               }})
            .output;
    if (registration != registered)
        return {"the modem is not registered with a network",
                "'cmifctl network show' shows the registration, 'cmifctl radio functionality full' "
                "switches the radio on."};
    const std::string error = daemon_error(run);
    return {error.empty() ? "the daemon does not say why" : "the daemon says: " + error,
            "'cmifctl log show' may tell more."};
}

void show_progress(const Plan &plan, int state, Clock::time_point started)
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - started);
    progress(std::string(plan.doing) + ", " + std::to_string(seconds.count()) + " s (" +
             state_text(state) + ")");
}

} // namespace

int connection_state(const Invocation &run)
{
    const Answer answer =
        call(run.options,
             {.request = no_request("shared_CMIF_get_connection_status"), .body = [](Json &output) {
                  int state = 0;
                  const int result = shared_CMIF_get_connection_status(&state);
                  output = state;
                  return result;
              }});
    return answer.result == CMIF_PROFILE_BUSY ? profile_change : answer.output.get<int>();
}

void bring_to(const Invocation &run, Goal goal)
{
    Plan way = plan(goal);
    const Clock::time_point started = Clock::now();
    way.call.waiting = [&] { show_progress(way, connection_state(run), started); };
    ask_qmi(run, way.call);

    const Clock::time_point accepted = Clock::now();
    const double timeout = run.options.timeout.value_or(default_timeout);
    for (;;) {
        const int state = connection_state(run);
        if (state == way.to)
            break;
        show_progress(way, state, started);
        const bool late = timeout > 0 && Seconds(Clock::now() - started).count() > timeout;
        const bool stays = state == way.from && Seconds(Clock::now() - accepted).count() > grace;
        if (stays || (late && goal == Goal::connected && !daemon_error(run).empty())) {
            const Reason why = reason(run);
            throw Failure(Exit::refused,
                          "the connection is still " + state_text(state) + ": " + why.text,
                          why.hint);
        }
        if (late)
            throw Failure(Exit::no_answer,
                          "time is up and the connection is not " + state_text(way.to) + ": " +
                              state_text(state),
                          "The daemon goes on; 'cmifctl data status' shows the state, --timeout "
                          "SECONDS waits longer.");
        std::this_thread::sleep_for(between_looks);
    }
    end_progress();
}

} // namespace cmifctl
