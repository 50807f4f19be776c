#include "qmi_readings.h"

#include "cmif/cmif.h"

#include <algorithm>
#include <array>

namespace cmifctl
{
namespace
{

// The getter writes at most N - 1 bytes, and no NUL when it uses them all.
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
    output = state;
    return result;
}

struct QmiReading {
    const char *section;
    const char *key;
    Call call;
};

std::array<QmiReading, 3> all_readings()
{
    // The lengths are those of the library's requests.
    // clang-format off
    return {{
        {"modem", "device_revision", {.request = qmi_request("shared_CMIF_get_device_rev_id", CMIF_QMI_GET_DEVICE_REVISION),
                                      .body = read_bounded<101, shared_CMIF_get_device_rev_id>}},
        {"sim",   "state",           sim_state_call()},
        {"data",  "packet_service",  {.request = qmi_request("shared_CMIF_get_ps_service", CMIF_QMI_GET_PACKET_SERVICE),
                                      .body = read_bounded<51, shared_CMIF_get_ps_service>}},
    }};
    // clang-format on
}

// The SIM's state that the AT daemon has published stays when there is no newer one.
void report_value(Context &context, const QmiReading &reading, const Json &value)
{
    if (std::string_view(reading.key) != "state")
        context.report.field(reading.section, {reading.key, value});
    else if (!value.is_null())
        context.report.field(reading.section, coded(reading.key, enums::sim_state, value));
}

// With a time limit that suits a reading which may be left out.
Context impatient(const Context &context)
{
    Context copy{context.output, context.options, {}, {}};
    const double asked = context.options.timeout.value_or(0);
    copy.options.timeout = asked > 0 ? std::min(asked, status_timeout) : status_timeout;
    return copy;
}

} // namespace

Call sim_state_call()
{
    return {.request = qmi_request("shared_CMIF_get_sim_status", CMIF_QMI_GET_SIM_STATUS),
            .body = read_sim_state};
}

void report_qmi_readings(Context &context, std::initializer_list<std::string_view> keys)
{
    const Context limited = impatient(context);
    Json reason;
    for (const QmiReading &reading : all_readings()) {
        if (std::find(keys.begin(), keys.end(), reading.key) == keys.end())
            continue;
        Json value;
        try {
            if (reason.is_null())
                value = qmi_call(limited, reading.call);
        } catch (const Failure &failure) {
            reason = failure.what();
        }
        report_value(context, reading, value);
    }
    const bool answers = reason.is_null();
    context.report.field("daemons", {.key = "qmi.answers",
                                     .value = answers,
                                     .text = answers ? "responding" : "not responding",
                                     .label = "QMI daemon"});
    context.report.field("daemons", {.key = "qmi.reason", .value = reason, .label = "reason"});
}

} // namespace cmifctl
