// The small requests: qfirehose, the uptime, and the connection at start-up.
#include "cmif/cmif.h"
#include "tests/support/files.h"
#include "tests/support/memory_store.h"
#include "tests/support/qmi_call.h"
#include "tests/support/system_calls.h"

#include <climits>
#include <gtest/gtest.h>

namespace
{
const std::string qfirehose = "shared_CMIF_set_CM_qfirehose";

using QmiSmallRequests = QmiTest;

TEST_F(QmiSmallRequests, QfirehoseIsSent)
{
    expect_call(shared_CMIF_set_CM_qfirehose, 0,
                {caller(qfirehose), ready(), did("msgget(1158, 0666)"),
                 printed(qfirehose + " get msqID = " + std::to_string(queues.requests())),
                 did("msgsnd(1158, type 9, size 5, flags 0)")});
    const std::optional<Message> sent = queues.take_request();
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->type, 9);
    EXPECT_EQ(sent->payload, std::string(5, '\0'));
}

TEST_F(QmiSmallRequests, QfirehoseCreatesNoQueue)
{
    queues.remove_requests();
    expect_call(shared_CMIF_set_CM_qfirehose, 2,
                {caller(qfirehose), ready(), did("msgget(1158, 0666)"),
                 printed(qfirehose + " can't get msqID")});
    EXPECT_FALSE(queue_exists(1158));
}

TEST_F(QmiSmallRequests, QfirehoseNeedsNoReplyQueue)
{
    queues.remove_replies();
    EXPECT_EQ(record(shared_CMIF_set_CM_qfirehose).result, 0);
    EXPECT_FALSE(queue_exists(1159));
}

TEST_F(QmiSmallRequests, QfirehoseCannotSend)
{
    inject(Failure::send);
    const Recorded run = record_with_errors(shared_CMIF_set_CM_qfirehose);
    EXPECT_EQ(run.result, 3);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.steps.back(), "print " + qfirehose + " msgsnd failed...");
    EXPECT_EQ(run.steps[run.steps.size() - 2], "msgsnd(1158, type 9, size 5, flags 0)");
}

TEST_F(QmiSmallRequests, QfirehoseIsNotSentWhenTheDaemonIsNotReady)
{
    write_file(qmi_ready_path, "of");
    expect_call(shared_CMIF_set_CM_qfirehose, 1, {caller(qfirehose), ready("of")});
}

TEST_F(QmiSmallRequests, QfirehosePrintsItsLinesWhateverTheSwitch)
{
    store::set("debug_qmi_cmif", "0");
    expect_call(shared_CMIF_set_CM_qfirehose, 0,
                {caller(qfirehose), ready(), did("msgget(1158, 0666)"),
                 printed(qfirehose + " get msqID = " + std::to_string(queues.requests())),
                 did("msgsnd(1158, type 9, size 5, flags 0)")});
}

TEST_F(QmiSmallRequests, UptimeIsTheStoredNumber)
{
    const std::pair<std::string, unsigned> rows[] = {
        {"", 0U},
        {"0", 0U},
        {"86400", 86400U},
        {"  12", 12U},
        {"12 s", 12U},
        {"x", 0U},
        {"2147483647", 2147483647U},
        {"-1", UINT_MAX},
        {std::string(98, '0') + "7", 7U},
        {std::string(99, '0') + "7", 0U}, // cut at 99
        {std::string(5000, ' '), 0U},
    };
    for (const auto &[stored, seconds] : rows) {
        store::set("lte_qmi_connection_uptime", stored);
        unsigned uptime = 4711;
        const Recorded run = record([&] { return shared_CMIF_get_connection_uptime(&uptime); });
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(uptime, seconds) << stored;
        EXPECT_EQ(run.steps, Lines{"get lte_qmi_connection_uptime"});
    }
}

TEST_F(QmiSmallRequests, UptimeReadsTheStoreBeforeItChecksThePointer)
{
    const Recorded run = record([] { return shared_CMIF_get_connection_uptime(nullptr); });
    EXPECT_EQ(run.result, 5);
    EXPECT_EQ(run.steps, (Lines{"get lte_qmi_connection_uptime",
                                "print shared_CMIF_get_connection_uptime nvram uptime == NULL!"}));
}

TEST_F(QmiSmallRequests, AutoConnectIsOnForOneTextOnly)
{
    for (const std::string stored : {"on", "On", "ON", "on ", " on", "onn", "o", "off", "1", ""}) {
        store::set("lte_qmi_auto_connect_when_start_up", stored);
        int enabled = 4711;
        const Recorded run =
            record([&] { return shared_CMIF_get_auto_connect_when_start_up(&enabled); });
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(enabled, stored == "on" ? 1 : 0) << stored;
        EXPECT_EQ(run.steps, Lines{"get lte_qmi_auto_connect_when_start_up"});
    }
    store::set("lte_qmi_auto_connect_when_start_up", std::string(5000, 'o'));
    int enabled = 4711;
    EXPECT_EQ(shared_CMIF_get_auto_connect_when_start_up(&enabled), 0);
    EXPECT_EQ(enabled, 0);
}

TEST_F(QmiSmallRequests, AutoConnectRefusesNull)
{
    const Recorded run = record([] { return shared_CMIF_get_auto_connect_when_start_up(nullptr); });
    EXPECT_EQ(run.result, 5);
    EXPECT_EQ(run.steps, Lines{});
}

struct SwitchRow {
    int enabled;
    std::string stored, printed;
};

TEST_F(QmiSmallRequests, AutoConnectIsStoredByOneTestAndPrintedByAnother)
{
    const SwitchRow rows[] = {{0, "off", "off"}, {1, "on", "on"},        {2, "off", "on"},
                              {-1, "off", "on"}, {INT_MAX, "off", "on"}, {256, "off", "on"}};
    for (const SwitchRow &row : rows) {
        const Recorded run =
            record([&] { return shared_CMIF_set_auto_connect_when_start_up(row.enabled); });
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(run.steps, (Lines{"set lte_qmi_auto_connect_when_start_up=" + row.stored, "save",
                                    "print shared_CMIF_set_auto_connect_when_start_up "
                                    "lte_qmi_auto_connect_when_start_up=" +
                                        row.printed + " save to nvram"}));
    }
}

TEST_F(QmiSmallRequests, CallsOfTheStoreAreNotLogged)
{
    unsigned uptime = 0;
    int enabled = 0;
    (void)shared_CMIF_get_connection_uptime(&uptime);
    (void)shared_CMIF_get_auto_connect_when_start_up(&enabled);
    (void)record([] { return shared_CMIF_set_auto_connect_when_start_up(1); });
    EXPECT_EQ(DebugLogFile::text(), "");
}
} // namespace
