// The trace switch of the QMI side: one cache per place, and the places of the exchange are shared
// by all calls.
#include "cmif/cmif.h"
#include "tests/support/files.h"
#include "tests/support/qmi_call.h"
#include "tests/support/system_calls.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{
constexpr int exchange_places = 5;          // start, two identifiers, the awaited type, success
constexpr int places = 1 + exchange_places; // and the readiness check's

class QmiSwitch : public QmiTest
{
protected:
    static void set(const std::string &value) { store::set("debug_qmi_cmif", value); }

    [[nodiscard]] Recorded status() const
    {
        queues.reply(6, "");
        return record([] { return shared_CMIF_get_sim_status(&answered_number); });
    }

    [[nodiscard]] Recorded service() const
    {
        queues.reply(8, "");
        return record([] { return shared_CMIF_get_ps_service(answered_text); });
    }

    static Recorded failing(Failure step)
    {
        inject(step);
        return record_with_errors([] { return shared_CMIF_get_sim_status(&answered_number); });
    }
};

size_t trace_lines(const Recorded &run)
{
    size_t count = 0;
    for (const std::string &step : run.steps)
        count += step.rfind("print [CMIF-QMI]", 0) == 0 ? 1U : 0U;
    return count;
}

TEST_F(QmiSwitch, EachTraceSiteReadsItOnce)
{
    EXPECT_EQ(switch_reads(status()), places);
    EXPECT_EQ(switch_reads(status()), 0);
    EXPECT_EQ(switch_reads(service()), 0);
    EXPECT_EQ(store::reads("debug_at_cmif"), 0);
}

TEST_F(QmiSwitch, EachTraceSiteReadsItRightBeforeItsLine)
{
    const Lines steps = status().steps;
    std::string before;
    for (const std::string &step : steps) {
        if (step.rfind("print [CMIF-QMI]", 0) == 0) {
            EXPECT_EQ(before, "get debug_qmi_cmif") << step;
        }
        before = step;
    }
}

TEST_F(QmiSwitch, AnyPositiveNumberIsOn)
{
    set("2 or so");
    EXPECT_EQ(trace_lines(status()), static_cast<size_t>(places));
}

TEST_F(QmiSwitch, OffStaysOffForAllCalls)
{
    set("");
    EXPECT_EQ(switch_reads(status()), places);
    set("1");
    for (const Recorded &run : {status(), service()}) {
        EXPECT_EQ(trace_lines(run), 0U);
        EXPECT_EQ(switch_reads(run), 0);
    }
}

TEST_F(QmiSwitch, OnStaysOnForAllCalls)
{
    (void)status();
    set("0");
    EXPECT_EQ(trace_lines(service()), static_cast<size_t>(places));
}

TEST_F(QmiSwitch, MinusOneIsReadEachTime)
{
    set("-1");
    EXPECT_EQ(switch_reads(status()), places);
    const Recorded second = status();
    EXPECT_EQ(switch_reads(second), places);
    EXPECT_EQ(trace_lines(second), 0U);
    set("1");
    EXPECT_EQ(trace_lines(service()), static_cast<size_t>(places));
}

TEST_F(QmiSwitch, OtherNegativeNumbersAreKept)
{
    set("-2");
    EXPECT_EQ(switch_reads(status()), places);
    set("1");
    const Recorded second = status();
    EXPECT_EQ(switch_reads(second), 0);
    EXPECT_EQ(trace_lines(second), 0U);
}

TEST_F(QmiSwitch, AChangeDuringTheWaitIsSeenAfterIt)
{
    set("0");
    calls::before("msgrcv", [] { set("1"); });
    EXPECT_EQ(status().output, "[CMIF-QMI] - (6) msgrcv succeeed!\n"
                               "shared_CMIF_get_sim_status : SIM_ABSENT\n"
                               "shared_CMIF_get_sim_status msgrcv succeeed!\n");
}

// Each failure has a place of its own, the two look-ups too: none of them has decided yet when all
// others have.
TEST_F(QmiSwitch, FailuresHaveTraceSitesOfTheirOwn)
{
    set("0");
    (void)status();
    set("1");
    for (const FailureRow &row : failures) {
        const Recorded run = failing(row.step);
        EXPECT_EQ(switch_reads(run), 1);
        EXPECT_EQ(trace_lines(run), 1U);
    }
}

TEST_F(QmiSwitch, TheTwoLookUpsHaveSeparateSites)
{
    set("0");
    EXPECT_EQ(trace_lines(failing(Failure::request_queue)), 0U);
    set("1");
    EXPECT_EQ(trace_lines(failing(Failure::request_queue)), 0U);
    EXPECT_EQ(trace_lines(failing(Failure::reply_queue)), 1U);
}

TEST_F(QmiSwitch, TheCallerTraceHasOneSiteForAllCalls)
{
    std::filesystem::remove(qmi_ready_path);
    set("0");
    EXPECT_EQ(switch_reads(record([] { return shared_CMIF_get_device_rev_id(nullptr); })), 1);
    set("1");
    for (const QmiRequest &request : qmi_requests) {
        const Recorded run = record(request.call);
        EXPECT_EQ(switch_reads(run), 0) << request.name;
        EXPECT_EQ(trace_lines(run), 0U) << request.name;
    }
}
} // namespace
