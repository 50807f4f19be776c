// The trace switch: what its texts mean, and that each place keeps its own, from any thread.
#include "cmif/cmif.h"
#include "tests/support/memory_store.h"
#include "tests/support/record.h"

#include <gtest/gtest.h>
#include <thread>

namespace
{
char out[64];

std::string line_of(const std::string &key)
{
    return "Get nvram " + key + "=''\n";
}
} // namespace

// One getter for each text, since each reads its switch once.
TEST(TraceSwitch, IsANumber)
{
    const struct {
        const char *stored;
        int (*get)(char *);
        std::string key;
        bool prints;
        bool reads_again;
    } rows[] = {
        {"1", shared_CMIF_get_mobileHWVersion, "lte_module_hw_ver", true, false},
        {"2", shared_CMIF_get_mobileFWVersion, "lte_module_sw_ver", true, false},
        {"255", shared_CMIF_get_mobileIMEI, "lte_mobile_imei", true, false},
        {"2147483647", shared_CMIF_get_mobileIMSI, "lte_mobile_imsi", true, false},
        {" 3", shared_CMIF_get_mobileSimICCID, "lte_mobile_iccid", true, false},
        {"+1 on", shared_CMIF_get_mobileNetworkMCC, "lte_query_network_mcc", true, false},
        {"1x", shared_CMIF_get_mobileNetworkMNC, "lte_query_network_mnc", true, false},
        {"", shared_CMIF_get_mobileRSSI, "lte_query_network_rssi", false, false},
        {"0", shared_CMIF_get_mobileRSRP, "lte_query_network_rsrp", false, false},
        {"00", shared_CMIF_get_mobileRSRQ, "lte_query_network_rsrq", false, false},
        {"on", shared_CMIF_get_mobileRSSINR, "lte_query_network_sinr", false, false},
        {"x1", shared_CMIF_get_mobileRadioBand, "lte_query_network_info_band", false, false},
        {"-2", shared_CMIF_get_mobileNetworkAPN, "lte_pdp_apn", false, false},
        {"-2147483648", shared_CMIF_get_mobileLastKnownAPN, "lte_pdp_last_apn", false, false},
        {"-1", shared_CMIF_get_mobileNetworkLAC, "lte_network_reg_status_lac", false, true},
        {" -1x", shared_CMIF_get_mobileSimStatus, "lte_sim_status", false, true},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.stored);
        store::set("debug_at_cmif", row.stored);
        const auto call = [&] { return row.get(out); };
        const std::string expected = row.prints ? line_of(row.key) : "";
        const int before = store::reads("debug_at_cmif");
        EXPECT_EQ(record(call).output, expected);
        EXPECT_EQ(store::reads("debug_at_cmif"), before + 1);
        EXPECT_EQ(record(call).output, expected);
        EXPECT_EQ(store::reads("debug_at_cmif"), before + (row.reads_again ? 2 : 1));
    }
}

// The QMI side has a switch of its own; neither decides for the other.
TEST(TraceSwitch, IsSeparateForEachChannel)
{
    store::set("debug_qmi_cmif", "1");
    EXPECT_EQ(record([] { return shared_CMIF_get_mobileIMEI(out); }).output, "");
    EXPECT_EQ(store::reads("debug_qmi_cmif"), 0);
}

// A reader of the log may rely on the order of lines with its own prints.
TEST(TraceSwitch, PrintsThroughTheCallersOwnStream)
{
    store::set("debug_at_cmif", "1");
    const Recorded run = record([] {
        printf("before\n");
        shared_CMIF_get_mobileIMEI(out);
        printf("after\n");
        return 0;
    });
    EXPECT_EQ(run.output, "before\n" + line_of("lte_mobile_imei") + "after\n");
}

TEST(TraceSwitch, MayBeReadByManyThreadsAtOnce)
{
    store::set("debug_at_cmif", "1");
    constexpr int callers = 8;
    constexpr int calls_each = 200;
    const Recorded run = record([] {
        std::vector<std::thread> threads;
        threads.reserve(callers);
        for (int i = 0; i < callers; ++i)
            threads.emplace_back([] {
                char own[64];
                for (int call = 0; call < calls_each; ++call)
                    shared_CMIF_get_mobileIMEI(own);
            });
        for (std::thread &thread : threads)
            thread.join();
        return 0;
    });
    std::string expected;
    for (int i = 0; i < callers * calls_each; ++i)
        expected += line_of("lte_mobile_imei");
    EXPECT_EQ(run.output, expected);
    EXPECT_GE(store::reads("debug_at_cmif"), 1);
    EXPECT_LE(store::reads("debug_at_cmif"), callers);
}
