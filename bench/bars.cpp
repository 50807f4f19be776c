#include "cmif/cmif.h"
#include "daemon.h"
#include "getters.h"
#include "measure.h"
#include "parts.h"
#include "platform/tarn_nvram_config.h"
#include "qmi_by_hand.h"
#include "system_calls.h"

#include <cstdio>
#include <string>

namespace bench
{
namespace
{

using Work = void (*)();

// Each call of the work does it `times` times.
void compare(const char *row, const char *bar, Work by_hand, Work by_library, int times = 1)
{
    const auto measured = in_turns({block_of(by_hand, times), block_of(by_library, times)});
    figure({"bars", row, "by hand"}, "ns", spread(measured[0]));
    figure({"bars", row, "library"}, "ns", spread(measured[1]));
    figure({"bars", row, "ratio"}, "", spread(ratios(measured[1], measured[0])), bar);
}

void count_calls(const char *row, const char *bar, Work work)
{
    figure({"bars", row, "system calls"}, "", exactly(system_calls(work)), bar);
}

char out[256];

void request()
{
    shared_CMIF_set_timezone();
}
void request_by_hand()
{
    at_request_by_hand(CMIF_AT_SET_TIME_ZONE);
}
void send()
{
    shared_CMIF_set_AT_qfirehose();
}
void call()
{
    shared_CMIF_get_device_rev_id(out);
}

void switch_log(const char *value)
{
    tarnNvramConfig_set("debug_lte_enable", value);
    shared_debug_lte_mutex_init();
}

void qmi_exchange()
{
    std::FILE *marker = std::fopen(CMIF_QMI_READY_FILE, "w");
    if (marker == nullptr)
        return std::perror(CMIF_QMI_READY_FILE);
    std::fputs("on\n", marker);
    std::fclose(marker);
    const Daemon daemon(serve_qmi_calls);
    switch_log("0");
    compare(
        "QMI exchange, log off", "<=1.10", [] { qmi_exchange_by_hand(false); }, call);
    switch_log("1");
    compare(
        "QMI exchange, log on", "<=1.10", [] { qmi_exchange_by_hand(true); }, call);
    switch_log("0");
}

} // namespace

void against_by_hand()
{
    for (int key = 0; key < 100; ++key) // about as many as a router's
        tarnNvramConfig_set(("lte_query_network_value_" + std::to_string(key)).c_str(), "1");
    set_getter_keys();
    compare("plain getter", "<=1.10", get_all_by_hand, get_all, getter_count);
    count_calls("plain getter", "=0", get_all);
    {
        const Daemon daemon(serve_at_requests);
        compare("AT request", "<=1.03", request_by_hand, request);
        count_calls("AT request", "=4", request);
        count_calls("AT request, send only", "=2", send);
    }
    qmi_exchange();
}

} // namespace bench
