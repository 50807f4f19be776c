// The time stamp: rounded milliseconds, the carry, and the time zone in force.
#include "cmif/cmif.h"
#include "tests/support/memory_store.h"
#include "tests/support/record.h"
#include "tests/support/system_calls.h"

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <string>

namespace
{
constexpr char central_europe[] = "CET-1CEST,M3.5.0,M10.5.0/3";

// A wall-clock time of one zone, whatever zone the test runs in.
struct Moment {
    int year, month, day, hour, minute, second;

    [[nodiscard]] time_t utc() const
    {
        std::tm parts{};
        parts.tm_year = year - 1900;
        parts.tm_mon = month - 1;
        parts.tm_mday = day;
        parts.tm_hour = hour;
        parts.tm_min = minute;
        parts.tm_sec = second;
        return timegm(&parts);
    }
};

struct Row {
    const char *zone;
    Moment utc;
    suseconds_t microseconds;
    const char *text;
};

const Row rows[] = {
    // Rounding to the nearest millisecond
    {"UTC0", {2024, 5, 6, 7, 8, 9}, 0, "05-06_07:08:09:000"},
    {"UTC0", {2024, 5, 6, 7, 8, 9}, 499, "05-06_07:08:09:000"},
    {"UTC0", {2024, 5, 6, 7, 8, 9}, 500, "05-06_07:08:09:001"},
    {"UTC0", {2024, 5, 6, 7, 8, 9}, 1499, "05-06_07:08:09:001"},
    {"UTC0", {2024, 5, 6, 7, 8, 9}, 9500, "05-06_07:08:09:010"},
    {"UTC0", {2024, 5, 6, 7, 8, 9}, 123456, "05-06_07:08:09:123"},
    {"UTC0", {2024, 5, 6, 7, 8, 9}, 998500, "05-06_07:08:09:999"},
    // The carry
    {"UTC0", {2024, 5, 6, 7, 8, 9}, 999499, "05-06_07:08:09:999"},
    {"UTC0", {2024, 5, 6, 7, 8, 9}, 999500, "05-06_07:08:10:000"},
    {"UTC0", {2024, 5, 6, 7, 8, 9}, 999999, "05-06_07:08:10:000"},
    {"UTC0", {2024, 5, 6, 7, 59, 59}, 999500, "05-06_08:00:00:000"},
    {"UTC0", {2024, 5, 6, 23, 59, 59}, 999499, "05-06_23:59:59:999"},
    {"UTC0", {2024, 5, 6, 23, 59, 59}, 999500, "05-07_00:00:00:000"},
    {"UTC0", {2024, 2, 28, 23, 59, 59}, 999500, "02-29_00:00:00:000"},
    {"UTC0", {2023, 2, 28, 23, 59, 59}, 999500, "03-01_00:00:00:000"},
    {"UTC0", {2024, 12, 31, 23, 59, 59}, 999500, "01-01_00:00:00:000"},
    {"UTC0", {1970, 1, 1, 0, 0, 0}, 0, "01-01_00:00:00:000"},
    // Time zones, across midnight and into summer time
    {"EST5", {2024, 5, 6, 3, 8, 9}, 0, "05-05_22:08:09:000"},
    {"IST-5:30", {2024, 12, 31, 18, 30, 0}, 0, "01-01_00:00:00:000"},
    {central_europe, {2024, 1, 15, 12, 0, 0}, 0, "01-15_13:00:00:000"},
    {central_europe, {2024, 7, 15, 12, 0, 0}, 0, "07-15_14:00:00:000"},
    {central_europe, {2024, 3, 31, 0, 59, 59}, 999499, "03-31_01:59:59:999"},
    {central_europe, {2024, 3, 31, 0, 59, 59}, 999500, "03-31_03:00:00:000"},
};

// One row after the other in one process: a change of the zone shows at once.
TEST(TimeStamp, IsTheLocalTimeWithRoundedMilliseconds)
{
    for (const Row &row : rows) {
        setenv("TZ", row.zone, 1);
        calls::set_time(row.utc.utc(), row.microseconds);
        EXPECT_STREQ(get_time(), row.text) << row.zone << ", " << row.microseconds;
    }
}

TEST(TimeStamp, IsInOneBufferForAllCalls)
{
    setenv("TZ", "UTC0", 1);
    calls::set_time(0, 0);
    const char *first = get_time();
    calls::set_time(1, 0);
    EXPECT_EQ(get_time(), first);
    EXPECT_STREQ(first, "01-01_00:00:01:000");
}

TEST(TimeStamp, ReadsTheTimeOnceAndNothingElse)
{
    const int before = calls::count("gettimeofday");
    const Recorded run = record([] { return get_time() != nullptr; });
    EXPECT_EQ(run.result, 1);
    EXPECT_EQ(run.steps, Lines{});
    EXPECT_EQ(calls::count("gettimeofday"), before + 1);
    EXPECT_EQ(store::accesses(), 0);
}
} // namespace
