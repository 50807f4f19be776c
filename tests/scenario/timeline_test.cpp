// When the steps of a scenario are carried out.
#include "scenario/manual_clock.h"
#include "scenario/real_clock.h"
#include "scenario/timeline.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace
{

using namespace scenario;
using namespace std::chrono_literals;

class TimelineTest : public testing::Test
{
protected:
    Commands commands()
    {
        return {{"say", "TEXT", "",
                 [this](Words &words) -> Action {
                     const std::string text = words.take_rest("the text");
                     return [this, text] { said += text + '@' + seconds() + ' '; };
                 }},
                {"fail", "", "",
                 [](Words &) -> Action { return [] { throw std::runtime_error("no way"); }; }},
                {"raise", "EVENT", "", [this](Words &words) -> Action {
                     const std::string event = words.take("the event").text;
                     return [this, event] { timeline->event(event); };
                 }}};
    }
    void play(std::string_view text)
    {
        timeline.emplace(clock, parse_script(text, "f", commands()),
                         [this](const Step &step, const std::string &why) {
                             failures += std::to_string(step.line) + ": " + why;
                         });
    }
    std::string seconds() const { return std::to_string((clock.now() - start_) / 1s); }

    ManualClock clock;
    std::string said, failures;
    std::optional<Timeline> timeline;

private:
    Time start_ = clock.now();
};

TEST_F(TimelineTest, FollowsTheClockAndTheOrderOfTheFile)
{
    play("at 5s say five\n"
         "say start\n"
         "at 5s say also\n"
         "at 2s say two\n"
         "every 2s say again\n");
    EXPECT_EQ(said, "");
    timeline->start();
    EXPECT_EQ(said, "start@0 ");
    clock.advance(6s);
    EXPECT_EQ(said, "start@0 two@2 again@2 again@4 five@5 also@5 again@6 ");
}

TEST_F(TimelineTest, TimesCountFromTheStart)
{
    play("at 5s say five\n");
    clock.advance(10s);
    timeline->start();
    clock.advance(4s);
    EXPECT_EQ(said, "");
    clock.advance(1s);
    EXPECT_EQ(said, "five@15 ");
}

TEST_F(TimelineTest, AnEventCountsTheFirstTime)
{
    play("when connected say up\nwhen registered say there\nwhen connected say up too\n");
    timeline->event("connected"); // before the start
    timeline->start();
    EXPECT_EQ(said, "");
    timeline->event("connected");
    timeline->event("connected");
    EXPECT_EQ(said, "up@0 up too@0 ");
}

TEST_F(TimelineTest, AnActionMayRaiseAnEvent)
{
    play("at 1s raise connected\nwhen connected raise sms\nwhen sms say done\n");
    timeline->start();
    clock.advance(1s);
    EXPECT_EQ(said, "done@1 ");
}

TEST_F(TimelineTest, GoesOnAfterAFailure)
{
    play("at 1s fail\nat 2s say on\n");
    timeline->start();
    clock.advance(2s);
    EXPECT_EQ(failures, "1: no way");
    EXPECT_EQ(said, "on@2 ");
}

TEST_F(TimelineTest, ShowsWhatIsStillToCome)
{
    play("at 1s say a\nwhen sms say b\nevery 5s say c # again\nsay d");
    timeline->start();
    EXPECT_EQ(timeline->pending(),
              (std::vector<std::string>{"at 1s say a", "when sms say b", "every 5s say c"}));
    clock.advance(20s);
    timeline->event("sms");
    EXPECT_EQ(timeline->pending(), std::vector<std::string>{"every 5s say c"});
}

// Without any delay a repetition must not take the whole processor.
TEST(TimelineOnARealClock, IsPacedAndLeavesTimeBetweenRepetitions)
{
    RealClock clock(TimeScale(0));
    std::atomic<int> times = 0;
    std::atomic<bool> late = false;
    const Commands commands{
        {"count", "", "", [&](Words &) -> Action { return [&] { ++times; }; }},
        {"late", "", "", [&](Words &) -> Action { return [&] { late = true; }; }}};
    Timeline timeline(clock, parse_script("every 10s count\nat 1440min late", "f", commands),
                      [](const Step &, const std::string &) {});
    timeline.start();
    EXPECT_TRUE(late);
    const Time before = clock.now();
    while (times < 5 && clock.now() < before + 10s)
        std::this_thread::sleep_for(1ms);
    EXPECT_GE(times, 5);
    EXPECT_LE(times, 2 + (clock.now() - before) / 10ms);
}

} // namespace
