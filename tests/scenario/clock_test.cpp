// Both clocks, their alarms, and the threads that wait by them.
#include "scenario/manual_clock.h"
#include "scenario/real_clock.h"
#include "scenario/work.h"

#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace
{

using namespace scenario;
using namespace std::chrono_literals;

TEST(ManualClock, KeepsItsTimeUntilItIsAdvanced)
{
    ManualClock clock;
    const Time before = clock.now();
    std::this_thread::sleep_for(2ms);
    EXPECT_EQ(clock.now(), before);
    EXPECT_TRUE(clock.advance(90s));
    EXPECT_EQ(clock.now(), before + 90s);
}

TEST(ManualClock, LetsAlarmsRingInTheOrderOfTheirTimes)
{
    ManualClock clock;
    std::string order;
    const Time start = clock.now();
    Alarm late(clock, [&] { order += "late@" + std::to_string((clock.now() - start) / 1s) + " "; });
    Alarm first(clock, [&] { order += "first "; });
    Alarm second(clock, [&] { order += "second "; }); // of equal times, the older alarm
    late.set(start + 5s);
    second.set(start + 2s);
    first.set(start + 2s);
    clock.advance(1s);
    EXPECT_EQ(order, "");
    clock.advance(4s);
    EXPECT_EQ(order, "first second late@5 ");
    clock.advance(1h);
    EXPECT_EQ(order, "first second late@5 ");
}

TEST(ManualClock, AnAlarmMaySetItselfAgain)
{
    ManualClock clock;
    int times = 0;
    std::optional<Alarm> alarm;
    alarm.emplace(clock, [&] {
        ++times;
        alarm->set(clock.now() + 2s);
    });
    alarm->set(clock.now() + 2s);
    clock.advance(9s);
    EXPECT_EQ(times, 4);
    alarm->set(std::nullopt);
    clock.advance(9s);
    EXPECT_EQ(times, 4);
}

TEST(ManualClock, AnAlarmInThePastRingsWithoutTurningTimeBack)
{
    ManualClock clock;
    clock.advance(10s);
    std::optional<Time> rung;
    Alarm alarm(clock, [&] { rung = clock.now(); });
    alarm.set(clock.now() - 3s);
    clock.advance(0s);
    EXPECT_EQ(rung, clock.now());
}

// Each step of a thread that a pause releases is done before the next pause ends.
TEST(ManualClock, WaitsForTheThreadsThatItReleases)
{
    for (int run = 0; run < 50; ++run) {
        ManualClock clock;
        Pause pause(clock);
        std::string steps; // by one thread at a time, or the thread sanitizer finds it
        std::vector<std::thread> threads;
        for (const int number : {1, 2, 3}) {
            clock.begin_work();
            threads.emplace_back([&, number] {
                const Work work(clock, Work::Begun{});
                for (int i = 0; i < 3; ++i) {
                    pause.wait_for(number * 10s + 1s);
                    std::this_thread::sleep_for(100us);
                    steps += std::to_string(number);
                }
            });
        }
        EXPECT_TRUE(clock.advance(95s));
        EXPECT_EQ(steps, "121312323") << run; // at 11, 21, 22, 31, 33, 42, 62, 63 and 93 s
        for (std::thread &thread : threads)
            thread.join();
    }
}

// Woken by one alarm, they go on in the order in which they began to wait, and after the alarm.
TEST(ManualClock, LetsOneThreadGoOnAtATime)
{
    for (int run = 0; run < 50; ++run) {
        ManualClock clock;
        std::mutex mutex;
        Waiters waiters(clock);
        std::string steps;
        bool over = false;
        std::vector<std::thread> threads;
        for (const char *const name : {"a", "b", "c"}) {
            clock.begin_work();
            threads.emplace_back([&, name] {
                const Work work(clock, Work::Begun{});
                std::unique_lock lock(mutex);
                while (!over)
                    waiters.wait(lock);
                lock.unlock();
                std::this_thread::sleep_for(50us);
                steps += name;
            });
            clock.advance(0s); // until it waits
        }
        clock.perform([&] {
            {
                const std::lock_guard lock(mutex);
                over = true;
                waiters.wake();
            }
            std::this_thread::sleep_for(50us);
            steps += "alarm ";
        });
        EXPECT_EQ(steps, "alarm abc");
        for (std::thread &thread : threads)
            thread.join();
    }
}

TEST(ManualClock, PassesOnWhatAnActionThrows)
{
    ManualClock clock;
    EXPECT_THROW(clock.perform([] { throw std::runtime_error("no"); }), std::runtime_error);
    EXPECT_TRUE(clock.advance(1s));
}

TEST(ManualClock, ReportsAThreadThatDoesNotEndItsWork)
{
    ManualClock clock;
    clock.begin_work();
    EXPECT_FALSE(clock.advance(1s, 5ms));
    clock.end_work();
    EXPECT_TRUE(clock.advance(1s, 5ms));
}

TEST(Work, WithinAnotherOneAddsNothing)
{
    ManualClock clock;
    {
        const Work outer(clock);
        EXPECT_TRUE(Work::in_this_thread());
        {
            const Work inner(clock);
        }
        EXPECT_TRUE(Work::in_this_thread());
        EXPECT_FALSE(clock.advance(0s, 1ms));
    }
    EXPECT_FALSE(Work::in_this_thread());
    EXPECT_TRUE(clock.advance(0s, 1ms));
}

TEST(Pause, CanBeCancelled)
{
    RealClock clock;
    Pause pause(clock);
    std::thread other([&] { EXPECT_FALSE(pause.wait_for(1h)); });
    pause.call_off();
    other.join();
    EXPECT_FALSE(pause.wait_for(0s));
}

TEST(RealClock, FollowsTheMachinesTime)
{
    RealClock clock(TimeScale(0.5));
    EXPECT_EQ(clock.scale().scaled(10ms), 5ms);
    const Time before = clock.now();
    Pause pause(clock);
    EXPECT_TRUE(pause.wait_for(20ms));
    EXPECT_GE(clock.now() - before, 20ms);
}

TEST(RealClock, LetsAnEarlierAlarmRingFirst)
{
    RealClock clock;
    std::atomic<bool> late_rung = false, rung = false;
    Alarm late(clock, [&] { late_rung = true; });
    Alarm soon(clock, [&] { rung = true; });
    late.set(clock.now() + 1h);
    soon.set(clock.now() + 1ms);
    for (int i = 0; i < 5000 && !rung; ++i)
        std::this_thread::sleep_for(1ms);
    EXPECT_TRUE(rung);
    EXPECT_FALSE(late_rung);
}

TEST(Alarm, DoesNotRingOnceItIsGone)
{
    for (int run = 0; run < 100; ++run) {
        RealClock clock;
        int times = 0;
        {
            Alarm alarm(clock, [&] { ++times; });
            alarm.set(clock.now() + std::chrono::microseconds(run));
            std::this_thread::sleep_for(50us);
        }
        const int before = times; // not atomic: nothing may ring any more
        std::this_thread::sleep_for(100us);
        EXPECT_EQ(times, before);
    }
}

} // namespace
