// The waits of start and stop while a profile is being modified.
#include "cmif/cmif.h"
#include "tests/support/files.h"
#include "tests/support/memory_store.h"
#include "tests/support/qmi_connection.h"
#include "tests/support/system_calls.h"

#include <climits>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{
class QmiWaits : public QmiConnection
{
protected:
    // The marker vanishes in this sleep, counted from 1.
    static void end_busy_in_sleep(int number)
    {
        calls::before("sleep", [last = calls::count("sleep") + number] {
            if (calls::count("sleep") == last)
                std::filesystem::remove(profile_busy_path);
        });
    }

    static Events wait(const std::string &api, int seconds)
    {
        return sequence(
            {said("[" + api + "]: another connection status in progress... please wait " +
                  std::to_string(seconds) + " sec ..."),
             did("sleep(1)")});
    }

    // So many turns, counted down from `first`.
    static Events waits(const std::string &api, int first, int count)
    {
        Events events;
        for (int turn = 0; turn < count; ++turn)
            events = sequence({events, wait(api, first - turn)});
        return events;
    }
};

// The waits of the start: two stored times, and the turn in which the marker vanishes (0: never).
struct WaitRow {
    std::string before, after;
    int vanishes, first, turns;
};

const WaitRow start_waits[] = {
    {"", "", 0, 0, 0},       {"0", "0", 0, 0, 0},    {"x", "y", 0, 0, 0},     {"5", "-5", 0, 0, 0},
    {"3", "2", 0, 5, 5},     {"1", "", 0, 1, 1},     {"", "4", 0, 4, 4},      {"5", "-3", 0, 2, 2},
    {" 2s", "+1", 0, 3, 3},  {"30", "30", 7, 60, 7}, {"12", "0", 12, 12, 12}, {"2", "0", 1, 2, 1},
    {"-1", "0", 25, -1, 25}, {"0", "-3", 9, -3, 9},  {"2", "-4", 1, -2, 1},
};

TEST_F(QmiWaits, StartWaitsForItsBudget)
{
    store::set(state_key, "3"); // not looked at while the marker is there
    for (const WaitRow &row : start_waits) {
        SCOPED_TRACE(row.before + " and " + row.after);
        store::set(before_key, row.before);
        store::set(after_key, row.after);
        set_busy();
        end_busy_in_sleep(row.vanishes);
        expect_start({waits(start, row.first, row.turns), started()});
        EXPECT_EQ(file_exists(profile_busy_path), row.vanishes == 0);
    }
}

TEST_F(QmiWaits, StartWithoutAMarkerDoesNotWait)
{
    store::set(state_key, "1");
    for (const char *budget : {"10", "-10"}) {
        store::set(before_key, budget);
        expect_start({started()});
    }
}

TEST_F(QmiWaits, TheLargestBudgetsDoNotOverflow)
{
    set_busy();
    store::set(before_key, std::to_string(INT_MAX));
    store::set(after_key, std::to_string(INT_MAX));
    end_busy_in_sleep(2);
    queues.reply(4, "");
    EXPECT_EQ(record(shared_CMIF_start_network_interface).result, 0);
    EXPECT_EQ(calls::count("sleep"), 2);
}

// Tested before the wait: a connection that comes up during it is not noticed.
TEST_F(QmiWaits, StartDoesNotTestAgainAfterItsWait)
{
    store::set(state_key, "2");
    store::set(before_key, "3");
    set_busy();
    calls::before("sleep", [] {
        store::set(state_key, "3");
        std::filesystem::remove(profile_busy_path);
    });
    expect_start({waits(start, 3, 1), started()});
    EXPECT_EQ(store::reads(state_key), 0); // the marker was there at the test
}

// Tested after the wait: a connection that goes down during it needs no request.
TEST_F(QmiWaits, StopTestsAfterItsWait)
{
    store::set(state_key, "3");
    set_busy();
    calls::before("sleep", [] {
        store::set(state_key, "1");
        std::filesystem::remove(profile_busy_path);
    });
    expect_stop({waits(stop, 10, 1), said(stop + " already disconnected!")});
}

TEST_F(QmiWaits, StopWaitsTenSecondsAtMost)
{
    store::set(state_key, "1"); // not looked at while the marker is there
    store::set(before_key, "3");
    set_busy();
    expect_stop({waits(stop, 10, 10), stopped()});
    EXPECT_EQ(calls::count("sleep"), 10);
    EXPECT_EQ(store::reads(before_key), 0);
}

TEST_F(QmiWaits, StopWaitsNoLongerThanTheMarkerIsThere)
{
    store::set(state_key, "3");
    for (const int turn : {1, 4, 9, 10}) {
        set_busy();
        end_busy_in_sleep(turn);
        expect_stop({waits(stop, 10, turn), stopped()});
    }
}

TEST_F(QmiWaits, NotReadyIsSeenAfterTheWaits)
{
    std::filesystem::remove(qmi_ready_path);
    store::set(before_key, "2");
    set_busy();
    expect_start({waits(start, 2, 2), said("[" + start + "] msg thread not ready")}, 1);
    expect_stop({waits(stop, 10, 10), said("[" + stop + "] msg thread not ready")}, 1);
}
} // namespace
