#include "qmi_readings.h"

#include "cmif/cmif.h"

#include <algorithm>
#include <array>
#include <vector>

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

using Readings = std::vector<QmiReading>;

Readings readings_of(std::initializer_list<std::string_view> keys)
{
    Readings wanted;
    for (QmiReading &reading : all_readings())
        if (std::find(keys.begin(), keys.end(), reading.key) != keys.end())
            wanted.push_back(std::move(reading));
    return wanted;
}

// One child for all of them; each process costs as much as a request.
Call call_for(const Readings &readings)
{
    Call call = readings.front().call;
    for (std::size_t i = 1; i < readings.size(); ++i)
        call.further.push_back(readings[i].call.request.code);
    call.body = [&readings](Json &output) {
        for (const QmiReading &reading : readings)
            if (const int result = reading.call.body(output[reading.key]); result != CMIF_OK)
                return result;
        return static_cast<int>(CMIF_OK);
    };
    return call;
}

void report_daemon(Context &context, const Json &reason)
{
    const bool answers = reason.is_null();
    context.report.field("daemons", {.key = "qmi.answers",
                                     .value = answers,
                                     .text = answers ? "responding" : "not responding",
                                     .label = "QMI daemon"});
    context.report.field("daemons", {.key = "qmi.reason", .value = reason, .label = "reason"});
}

} // namespace

Call sim_state_call()
{
    return {.request = qmi_request("shared_CMIF_get_sim_status", CMIF_QMI_GET_SIM_STATUS),
            .body = read_sim_state};
}

void report_qmi_readings(Context &context, std::initializer_list<std::string_view> keys)
{
    const Readings readings = readings_of(keys);
    Json values;
    Json reason;
    try {
        values = qmi_call(impatient(context), call_for(readings));
    } catch (const Failure &failure) {
        reason = failure.what();
    }
    for (const QmiReading &reading : readings)
        report_value(context, reading, values.is_null() ? Json() : values[reading.key]);
    report_daemon(context, reason);
}

} // namespace cmifctl
