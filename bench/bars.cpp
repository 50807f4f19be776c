#include "cmif/cmif.h"
#include "daemon.h"
#include "measure.h"
#include "parts.h"
#include "platform/tarn_nvram_config.h"
#include "qmi_by_hand.h"
#include "system_calls.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace bench
{
namespace
{

using Work = void (*)();

void compare(const char *row, const char *bar, Work by_hand, Work by_library)
{
    const auto measured = in_turns({block_of(by_hand), block_of(by_library)});
    figure({"bars", row, "by hand"}, "ns", spread(measured[0]));
    figure({"bars", row, "library"}, "ns", spread(measured[1]));
    figure({"bars", row, "ratio"}, "", spread(ratios(measured[1], measured[0])), bar);
}

void count_calls(const char *row, const char *bar, Work work)
{
    figure({"bars", row, "system calls"}, "", exactly(system_calls(work)), bar);
}

char out[256];

void get()
{
    shared_CMIF_get_mobileIMEI(out);
}
void get_by_hand()
{
    std::strcpy(out, tarnNvramConfig_get("lte_mobile_imei"));
}
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
    tarnNvramConfig_set("lte_mobile_imei", "004401018111111");
    compare("plain getter", "<=1.10", get_by_hand, get);
    count_calls("plain getter", "=0", get);
    {
        const Daemon daemon(serve_at_requests);
        compare("AT request", "<=1.03", request_by_hand, request);
        count_calls("AT request", "=4", request);
        count_calls("AT request, send only", "=2", send);
    }
    qmi_exchange();
}

} // namespace bench
