// The header in C and in C++ means the same, and its layouts are those of the interface.
#include "header_test.h"

#include "cmif/cmif.h"
#include "tests/support/memory_store.h"

#include <cstddef>
#include <gtest/gtest.h>

static_assert(offsetof(cmif_provider_info, oper_short) == 20);
static_assert(offsetof(cmif_provider_info, oper_numeric) == 40);
static_assert(offsetof(cmif_provider_info, stat) == 60);
static_assert(offsetof(cmif_provider_info, act) == 64);
static_assert(offsetof(cmif_sms_info, stat) == 4);
static_assert(offsetof(cmif_sms_info, da) == 5);
static_assert(offsetof(cmif_sms_info, scts) == 25);
static_assert(offsetof(cmif_sms_info, text) == 75);
static_assert(offsetof(qmi_msg, payload) == sizeof(long));

TEST(Header, HasTheSameRecordsInBothLanguages)
{
    const size_t sizes[] = {
        sizeof(WirelessBroadbandInfo), sizeof(cmif_provider_info), sizeof(cmif_sms_info),
        sizeof(qmi_profile),           sizeof(cmif_msg),           sizeof(qmi_msg)};
    for (size_t i = 0; i < record_count; ++i)
        EXPECT_EQ(sizes_in_c[i], sizes[i]) << i;
    EXPECT_EQ(sizeof(WirelessBroadbandInfo), 184U);
    EXPECT_EQ(sizeof(cmif_provider_info), 68U);
    EXPECT_EQ(sizeof(cmif_sms_info), 1100U);
    if (sizeof(long) == 4) {
        EXPECT_EQ(sizeof(cmif_msg), 120U);
        EXPECT_EQ(sizeof(qmi_msg), 316U);
    }
}

TEST(Header, NumbersItsResults)
{
    const int results[] = {-1, 0, 1, 2, 3, 4, 5, 6, 7};
    for (size_t i = 0; i < result_count; ++i)
        EXPECT_EQ(results_in_c[i], results[i]);
}

TEST(Header, ServesACaller)
{
    store::set("lte_mobile_imei", "490154203237518");
    store::set("lte_network_reg_status_state", "2");
    char imei[32];
    EXPECT_EQ(call_from_c(imei), 1);
    EXPECT_STREQ(imei, "490154203237518");
    EXPECT_EQ(call_with_a_profile(), 1); // nobody's message thread is ready here
}
