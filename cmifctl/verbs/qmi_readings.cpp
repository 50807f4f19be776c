#include "qmi_readings.h"

#include "client/result.h"
#include "cmif/cmif.h"
#include "daemon_state.h"

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
    output = text_or_null(text.data());
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
    EnumTable table{};
};

std::array<QmiReading, 3> all_readings()
{
    // The lengths are those of the library's requests.
    // clang-format off
    return {{
        {"modem", "device_revision", {.request = qmi_request("shared_CMIF_get_device_rev_id", CMIF_QMI_GET_DEVICE_REVISION),
                                      .body = read_bounded<101, shared_CMIF_get_device_rev_id>}},
        {"sim",   "state",           sim_state_call(), enums::sim_state},
        {"data",  "packet_service",  {.request = qmi_request("shared_CMIF_get_ps_service", CMIF_QMI_GET_PACKET_SERVICE),
                                      .body = read_bounded<51, shared_CMIF_get_ps_service>},
                                     enums::packet_service},
    }};
    // clang-format on
}

void report_value(Context &context, const QmiReading &reading, const Json &value)
{
    const bool is_sim_state = std::string_view(reading.key) == "state";
    if (is_sim_state && value.is_null())
        return; // what the AT daemon has published stays
    context.report.field(reading.section, reading.table.empty()
                                              ? Field{reading.key, value}
                                              : coded(reading.key, reading.table, value));
}

// With a time limit that suits a reading which may be left out.
client::CallOptions impatient(client::CallOptions options)
{
    const double asked = options.timeout.value_or(0);
    options.timeout = asked > 0 ? std::min(asked, status_timeout) : status_timeout;
    return options;
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

// What a request that failed tells of the daemon.
Asked asked(const Failure &failure)
{
    if (failure.status() == Exit::not_ready)
        return Asked::not_ready;
    return failure.details().value("sent", false) ? Asked::silent : Asked::no;
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
    const Call call = call_for(readings);
    Answer answer;
    Daemon daemon;
    try {
        answer = client::call(impatient(context.options), call);
        daemon = inspect_daemon(client::Channel::qmi, Asked::answered);
        client::check_qmi(call.request.name, answer.result);
    } catch (const Failure &failure) {
        if (!answer.answered)
            daemon = inspect_daemon(client::Channel::qmi, asked(failure));
        daemon.reason = failure.what();
        answer.output = nullptr;
    }
    for (const QmiReading &reading : readings)
        report_value(context, reading,
                     answer.output.is_null() ? Json() : answer.output[reading.key]);
    report_daemon(context.report, client::Channel::qmi, daemon);
}

} // namespace cmifctl
