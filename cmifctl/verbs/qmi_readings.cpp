#include "qmi_readings.h"

#include "client/result.h"
#include "cmif/cmif.h"

#include <algorithm>
#include <array>

namespace cmifctl
{

namespace
{

// At most N - 1 bytes, not terminated when they are all used.
template <std::size_t N, int (*getter)(char *)>
int read_bounded(Json &output)
{
    std::array<char, N> text{};
    const int result = getter(text.data());
    output = text.data();
    return result;
}

int read_sim_state(Json &output)
{
    int state = 0;
    const int result = shared_CMIF_get_sim_status(&state);
    output = enumeration(names::sim_state, state);
    return result;
}

struct View {
    const char *section;
    const char *key;
    Call call;
};

std::array<View, 3> all_views()
{
    return {{{"modem",
              "device_revision",
              {.request = qmi_request("shared_CMIF_get_device_rev_id", 1, 101),
               .body = read_bounded<101, shared_CMIF_get_device_rev_id>}},
             {"sim", "state", sim_state_call()},
             {"data",
              "packet_service",
              {.request = qmi_request("shared_CMIF_get_ps_service", 8, 51),
               .body = read_bounded<51, shared_CMIF_get_ps_service>}}}};
}

} // namespace

Call sim_state_call()
{
    return {.request = qmi_request("shared_CMIF_get_sim_status", 6, 5), .body = read_sim_state};
}

void report_qmi_views(Invocation &run, std::initializer_list<std::string_view> keys)
{
    Invocation impatient{run.options, {}, {}};
    impatient.options.timeout = status_timeout;
    if (const double asked = run.options.timeout.value_or(0); asked > 0)
        impatient.options.timeout = std::min(asked, status_timeout);

    Json reason;
    for (const View &view : all_views()) {
        if (std::find(keys.begin(), keys.end(), view.key) == keys.end())
            continue;
        Json value;
        try {
            if (reason.is_null())
                value = ask_qmi(impatient, view.call);
        } catch (const Failure &failure) {
            reason = failure.what();
        }
        run.report.field(view.section, {view.key, value});
    }
    run.report.field("daemons", {"qmi_answers", reason.is_null()});
    run.report.field("daemons", {"qmi_reason", reason});
}

} // namespace cmifctl
