#include "registration.h"

#include "cmifctl/output/terminal.h"
#include "platform/tarn_nvram_config.h"
#include "store.h"

#include <thread>

namespace cmifctl
{
namespace
{

using Clock = std::chrono::steady_clock;

constexpr auto poll_interval = std::chrono::milliseconds(200);
// Seconds for which the daemon may still publish what was true before the request.
constexpr double grace_period = 2;

enum Stat { home = 1, denied = 3, roaming = 5 };

struct Published {
    int registration;
    std::string operator_code;
    int technology;
};

int number(const char *key)
{
    const Json value = enumeration(enums::technology, tarnNvramConfig_get(key));
    return value["code"].is_null() ? -1 : value["code"].get<int>();
}

Published published(const Context &context)
{
    const Json all = read(context, "reading the registration", [](Json &output) {
        require_daemons_store();
        const Json stat =
            enumeration(enums::registration, tarnNvramConfig_get("lte_network_reg_status_state"));
        output = {{"registration", stat["code"].is_null() ? Json(-1) : stat["code"]},
                  {"operator", tarnNvramConfig_get("lte_operator_select_operator_plmnname")},
                  {"technology", number("lte_operator_select_ats_value")}};
        return 0;
    });
    return {all["registration"], all["operator"], all["technology"]};
}

// The generation of a technology, by the code that selects it.
int generation(int technology)
{
    constexpr int gsm = 0, utran = 2, gsm_egprs = 3, eutran = 7;
    if (technology == gsm || technology == gsm_egprs)
        return gsm;
    return technology >= utran && technology < eutran ? utran : technology;
}

bool is_done(const Published &now, const Selected &selected)
{
    const bool registered = now.registration == home || now.registration == roaming;
    const bool fits =
        selected.technology.is_null() || selected.technology == generation(now.technology);
    return registered && fits && now.operator_code == selected.operator_code;
}

std::string state_text(int registration)
{
    return registration < 0 ? "unknown" : enumeration_text(enums::registration, registration);
}

double seconds_since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

void wait_for_registration(const Context &context, const Selected &selected,
                           Clock::time_point started)
{
    const Clock::time_point accepted = Clock::now();
    const double timeout = context.options.timeout.value_or(search_timeout);
    for (;;) {
        const Published now = published(context);
        if (is_done(now, selected))
            break;
        const std::string state = state_text(now.registration);
        show_progress("registering with " + selected.operator_code + " (" + state + ")");
        if (now.registration == denied && seconds_since(accepted) > grace_period)
            throw Failure(Exit::refused,
                          "the network " + selected.operator_code + " denies the registration",
                          "'cmifctl network auto' lets the modem choose the operator.");
        if (timeout > 0 && seconds_since(started) > timeout)
            throw Failure(Exit::no_answer,
                          "the modem is not registered with " + selected.operator_code +
                              " in time: " + state,
                          "It continues; 'cmifctl network show' shows the state. --timeout SECONDS "
                          "waits longer.");
        std::this_thread::sleep_for(poll_interval);
    }
    clear_progress();
}

} // namespace cmifctl
