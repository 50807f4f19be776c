// The connection's status, its start and its stop: what is asked in which state.
#include "cmif/cmif.h"
#include "tests/support/files.h"
#include "tests/support/memory_store.h"
#include "tests/support/qmi_connection.h"
#include "tests/support/system_calls.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{
const std::string out_of_range =
    "shared_CMIF_get_connection_status connection status nvram out of range or undefined  ";

struct StateRow {
    std::string stored;
    int state;
    bool in_range;
};

const StateRow states[] = {
    {"0", 0, true},
    {"1", 1, true},
    {"2", 2, true},
    {"3", 3, true},
    {"", 0, false},
    {"4", 0, false},
    {"10", 0, false},
    {"33", 0, false},
    {"-1", 0, false},
    {" 3", 0, false},
    {"3 ", 0, false},
    {"03", 0, false},
    {"/", 0, false},
    {":", 0, false},
    {"x", 0, false},
    {"3\n", 0, false},
    {"3000000000000000000000000000", 0, false},
};

TEST_F(QmiConnection, StatusIsTheStoredNumber)
{
    const int other_reads = store::reads();
    for (const StateRow &row : states) {
        store::set(state_key, row.stored);
        int state = 4711;
        const Recorded run = record([&] { return shared_CMIF_get_connection_status(&state); });
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(state, row.state) << row.stored;
        EXPECT_EQ(run.output, row.in_range ? "" : out_of_range + "\n");
        EXPECT_EQ(run.steps.front(), std::string("get ") + state_key);
    }
    EXPECT_EQ(store::reads(), other_reads + store::reads(state_key));
    EXPECT_EQ(DebugLogFile::text(), "");
}

TEST_F(QmiConnection, ALongStateIsCutWithoutDamage)
{
    store::set(state_key, std::string(5000, '3'));
    int state = 4711;
    EXPECT_EQ(record([&] { return shared_CMIF_get_connection_status(&state); }).output,
              out_of_range + "\n");
    EXPECT_EQ(state, 0);
}

TEST_F(QmiConnection, StatusIsBusyWhileAProfileIsModified)
{
    store::set(state_key, "3");
    int state = 4711;
    const std::function<int()> call = [&] { return shared_CMIF_get_connection_status(&state); };
    set_busy();
    expect_call(call, 7, {});
    EXPECT_EQ(state, 4711);
    EXPECT_EQ(store::reads(state_key), 0);

    write_file(profile_busy_path, ""); // an empty marker is one
    EXPECT_EQ(record(call).result, 7);
    std::filesystem::remove(profile_busy_path);
    std::filesystem::create_directory(profile_busy_path); // and so is a folder
    EXPECT_EQ(record(call).result, 7);
    std::filesystem::remove(profile_busy_path);
    EXPECT_EQ(record(call).result, 0);
    EXPECT_EQ(state, 3);
}

TEST_F(QmiConnection, StatusRefusesNull)
{
    set_busy();
    EXPECT_EQ(record([] { return shared_CMIF_get_connection_status(nullptr); }).steps, Lines{});
    EXPECT_EQ(shared_CMIF_get_connection_status(nullptr), 5);
}

TEST_F(QmiConnection, StartAsksUnlessConnected)
{
    for (const StateRow &row : states) {
        SCOPED_TRACE(row.stored);
        store::set(state_key, row.stored);
        const Events status = row.in_range ? Events{} : printed(out_of_range);
        if (row.state == 3)
            expect_start({said(start + " already connected!")});
        else
            expect_start({status, started()});
    }
}

TEST_F(QmiConnection, StopAsksUnlessDisconnected)
{
    for (const StateRow &row : states) {
        SCOPED_TRACE(row.stored);
        store::set(state_key, row.stored);
        const Events status = row.in_range ? Events{} : printed(out_of_range);
        if (row.state == 1)
            expect_stop({said(stop + " already disconnected!")});
        else
            expect_stop({status, stopped()});
    }
}

TEST_F(QmiConnection, StartAndStopWorkWithTheTraceOff)
{
    store::set("debug_qmi_cmif", "0");
    store::set(state_key, "2");
    expect_start({started()});
    expect_stop({stopped()});
}

TEST_F(QmiConnection, StartWhenConnectedReadsNothingElse)
{
    store::set(state_key, "3");
    store::set("lte_qmi_apn", "");
    std::filesystem::remove(qmi_ready_path);
    expect_start({said(start + " already connected!")});
    EXPECT_EQ(store::reads("lte_qmi_apn") + store::reads(before_key) + store::reads(after_key), 0);
    EXPECT_EQ(calls::count("msgget"), 0);
}

TEST_F(QmiConnection, StopWhenDisconnectedReadsNothingElse)
{
    store::set(state_key, "1");
    std::filesystem::remove(qmi_ready_path);
    expect_stop({said(stop + " already disconnected!")});
    EXPECT_EQ(calls::count("msgget"), 0);
}

TEST_F(QmiConnection, StartFailsWithoutAnApn)
{
    store::set(state_key, "1");
    store::set("lte_qmi_apn", "");
    store::set(before_key, "10");
    const Events denied =
        said("[" + start + "] API has been denied since apn has not been set yet");
    expect_start({denied}, 5);
    set_busy(); // no wait is made
    expect_start({denied}, 5);
    EXPECT_EQ(calls::count("msgget"), 0);
    EXPECT_EQ(store::reads(before_key), 0);
}

TEST_F(QmiConnection, ALongApnIsAccepted)
{
    store::set(state_key, "1");
    store::set("lte_qmi_apn", std::string(5000, 'a'));
    expect_start({started()});
}

TEST_F(QmiConnection, StartAndStopFailWhenTheDaemonIsNotReady)
{
    store::set(state_key, "2");
    write_file(qmi_ready_path, "off");
    expect_start({ready("of"), said("[" + start + "] msg thread not ready")}, 1);
    expect_stop({ready("of"), said("[" + stop + "] msg thread not ready")}, 1);
    EXPECT_EQ(calls::count("msgget"), 0);
}

TEST_F(QmiConnection, StartAddsNothingToAFailedExchange)
{
    store::set(state_key, "1");
    for (const FailureRow &row : failures) {
        inject(row.step);
        expect_start({ready(), exchange_failing(row.step, 4, 5)}, row.result);
    }
}

TEST_F(QmiConnection, StopAddsALineToAFailedExchange)
{
    store::set(state_key, "3");
    for (const FailureRow &row : failures) {
        inject(row.step);
        expect_stop(
            {ready(), exchange_failing(row.step, 5, 5), printed(stop + " msgrcv failed...")},
            row.result);
    }
}
} // namespace
