// The header in C and in C++ means the same. Layouts are in layout_test.cpp.
#include "header_test.h"

#include "cmif/cmif.h"
#include "tests/support/files.h"
#include "tests/support/memory_store.h"

#include <gtest/gtest.h>

TEST(Header, HasTheSameRecordsInBothLanguages)
{
    const size_t sizes[] = {
        sizeof(WirelessBroadbandInfo), sizeof(cmif_provider_info), sizeof(cmif_sms_info),
        sizeof(qmi_profile),           sizeof(cmif_msg),           sizeof(qmi_msg)};
    for (size_t i = 0; i < record_count; ++i)
        EXPECT_EQ(sizes_in_c[i], sizes[i]) << i;
}

TEST(Header, NumbersItsResults)
{
    const int results[] = {-1, 0, 1, 2, 3, 4, 5, 6, 7};
    for (size_t i = 0; i < result_count; ++i)
        EXPECT_EQ(results_in_c[i], results[i]);
}

TEST(Header, NumbersItsAtRequests)
{
    const std::pair<int, int> codes[] = {
        {CMIF_AT_SET_TIME_ZONE, 1},
        {CMIF_AT_SET_SEARCH_MODE, 2},
        {CMIF_AT_SELECT_AUTOMATICALLY, 3},
        {CMIF_AT_GET_PIN_COUNTERS, 4},
        {CMIF_AT_GET_PACKET_DOMAIN, 6},
        {CMIF_AT_SET_PACKET_DOMAIN, 7},
        {CMIF_AT_GET_PIN_MODE, 8},
        {CMIF_AT_SET_PIN_MODE, 9},
        {CMIF_AT_LOCK_NETWORK, 10},
        {CMIF_AT_UNLOCK_NETWORK, 11},
        {CMIF_AT_ENTER_PIN, 12},
        {CMIF_AT_CHANGE_PIN, 13},
        {CMIF_AT_ENTER_PUK, 14},
        {CMIF_AT_SET_ROAMING, 15},
        {CMIF_AT_SET_OPERATOR_FORMAT, 16},
        {CMIF_AT_SELECT_OPERATOR, 17},
        {CMIF_AT_LIST_MESSAGES, 18},
        {CMIF_AT_DELETE_MESSAGES, 19},
        {CMIF_AT_DOWNLOAD_MODE, 20},
        {CMIF_AT_FACTORY_RESET, 21},
        {CMIF_AT_SET_FUNCTIONALITY, 22},
        {CMIF_AT_GET_SEARCH_STATE, 23},
        {CMIF_AT_SEARCH, 24},
        {CMIF_AT_SET_PROFILE, 25},
        {CMIF_AT_START_DEVICE_MANAGEMENT, 26},
        {CMIF_AT_SYNCHRONIZE_PROFILE, 27},
    };
    for (const auto &[code, number] : codes)
        EXPECT_EQ(code, number);
}

TEST(Header, NumbersItsQmiRequests)
{
    const std::pair<int, int> codes[] = {
        {CMIF_QMI_GET_DEVICE_REVISION, 1},
        {CMIF_QMI_MODIFY_PROFILE, 3},
        {CMIF_QMI_START, 4},
        {CMIF_QMI_STOP, 5},
        {CMIF_QMI_GET_SIM_STATUS, 6},
        {CMIF_QMI_GET_PACKET_SERVICE, 8},
        {CMIF_QMI_DOWNLOAD_MODE, 9},
    };
    for (const auto &[code, number] : codes)
        EXPECT_EQ(code, number);
}

TEST(Header, HasTheKeysAndSizesOfTheQueues)
{
    EXPECT_EQ(CMIF_AT_REQUEST_KEY, 899);
    EXPECT_EQ(CMIF_AT_REPLY_KEY, 900);
    EXPECT_EQ(CMIF_QMI_REQUEST_KEY, 1158);
    EXPECT_EQ(CMIF_QMI_REPLY_KEY, 1159);
    EXPECT_EQ(CMIF_AT_PAYLOAD, 116);
    EXPECT_EQ(CMIF_QMI_PAYLOAD, 312);
}

TEST(Header, NamesTheFiles)
{
    EXPECT_STREQ(CMIF_PROVIDER_LIST_FILE, provider_list_path);
    EXPECT_STREQ(CMIF_QMI_READY_FILE, qmi_ready_path);
    EXPECT_STREQ(CMIF_PROFILE_BUSY_FILE, profile_busy_path);
    EXPECT_STREQ(CMIF_LOG_FILE, debug_log_path);
    EXPECT_STREQ(CMIF_LOG_FILE_1, debug_log_1_path);
    EXPECT_STREQ(CMIF_LOG_FILE_2, debug_log_2_path);
}

TEST(Header, ServesACaller)
{
    store::set("lte_mobile_imei", "490154203237518");
    store::set("lte_network_reg_status_state", "2");
    char imei[32];
    EXPECT_EQ(call_from_c(imei), 1);
    EXPECT_STREQ(imei, "490154203237518");
    EXPECT_EQ(call_with_a_profile(), 1); // no daemon is ready here
}
