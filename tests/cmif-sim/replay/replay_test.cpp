// The course of a recording: which reply a request gets and when, and what is set by then.
#include "cmif-sim/replay/replay.h"

#include <gtest/gtest.h>

namespace
{

using namespace std::chrono_literals;
using cmif_record::Channel;
using cmif_record::Event;
using Type = Event::Type;
using Log = std::vector<std::string>;

Event request(long code, std::map<std::string, std::string> fields = {}, long long time_ms = 0)
{
    return {Type::request, time_ms * 1000, Channel::at, code, "", std::move(fields)};
}
Event reply(long code, const std::string &payload, long long time_ms = 0)
{
    return {Type::reply, time_ms * 1000, Channel::at, code, payload};
}
Event setting(const std::string &value, long long time_ms = 0)
{
    return {Type::setting, time_ms * 1000, Channel::at, 0, "", {}, "key", value};
}

class ReplayTest : public testing::Test
{
protected:
    // A time beyond the start, so that nothing is carried out early.
    void record(std::vector<Event> events, double pace = 1, bool secrets_replaced = false)
    {
        events.insert(events.begin(), setting("boot", -200));
        contents_ = {secrets_replaced, std::move(events)};
        replay_.emplace(contents_, pace, [this](const Event &event) {
            log_.push_back(event.type == Type::reply ? event.payload : event.value);
        });
        replay_->start(start_);
    }
    bool take(const Event &event, std::chrono::milliseconds after)
    {
        return replay_->take(event, start_ + after);
    }
    // All that was carried out until then, since the last time.
    Log until(std::chrono::milliseconds after)
    {
        replay_->advance(start_ + after);
        return std::exchange(log_, {});
    }

private:
    cmif_sim::Replay::Time start_ = std::chrono::steady_clock::now();
    cmif_record::RecordingContents contents_;
    std::optional<cmif_sim::Replay> replay_;
    Log log_;
};

TEST_F(ReplayTest, AnswersAfterTheRecordedDelay)
{
    record({request(4, {}, 1000), reply(4, "answer", 1250)});
    until(0ms);
    ASSERT_TRUE(take(request(4), 7000ms));
    EXPECT_EQ(until(7249ms), Log());
    EXPECT_EQ(until(7250ms), Log{"answer"});
}

TEST_F(ReplayTest, ScalesDelaysByThePace)
{
    record({request(4, {}, 0), reply(4, "answer", 1000), setting("later", 2000)}, 0.1);
    ASSERT_TRUE(take(request(4), 0ms));
    EXPECT_EQ(until(99ms), Log{"boot"});
    EXPECT_EQ(until(100ms), Log{"answer"});
    EXPECT_EQ(until(199ms), Log());
    EXPECT_EQ(until(200ms), Log{"later"});
}

TEST_F(ReplayTest, SetsWhatWasSetBeforeTheReply)
{
    record({request(4, {}, 0), setting("1", 10), setting("2", 10), reply(4, "answer", 10),
            setting("3", 500)});
    until(0ms);
    ASSERT_TRUE(take(request(4), 0ms));
    EXPECT_EQ(until(10ms), (Log{"1", "2", "answer"}));
    EXPECT_EQ(until(400ms), Log());
    EXPECT_EQ(until(500ms), Log{"3"});
}

TEST_F(ReplayTest, WaitsForTheCallerBeforeARequest)
{
    record({setting("1", 0), request(4, {}, 100), setting("2", 200), reply(4, "answer", 300)});
    EXPECT_EQ(until(60'000ms), (Log{"boot", "1"}));
    ASSERT_TRUE(take(request(4), 60'000ms));
    EXPECT_EQ(until(60'100ms), Log{"2"});
    EXPECT_EQ(until(60'200ms), Log{"answer"});
}

TEST_F(ReplayTest, CatchesUpWithAnEarlyCaller)
{
    record({setting("1", 5000), request(4, {}, 9000), reply(4, "answer", 9000)});
    EXPECT_EQ(until(1ms), Log{"boot"});
    ASSERT_TRUE(take(request(4), 1ms));
    EXPECT_EQ(until(1ms), (Log{"1", "answer"}));
}

TEST_F(ReplayTest, GivesEqualRequestsTheirRepliesInOrder)
{
    record({request(4), reply(4, "first"), request(4), reply(4, "second")});
    until(0ms);
    ASSERT_TRUE(take(request(4), 0ms));
    EXPECT_EQ(until(0ms), Log{"first"});
    ASSERT_TRUE(take(request(4), 0ms));
    EXPECT_EQ(until(0ms), Log{"second"});
    EXPECT_FALSE(take(request(4), 0ms));
}

TEST_F(ReplayTest, DistinguishesRequestsByTheirFields)
{
    record({request(12, {{"pin", "\"0000\""}}), reply(12, "wrong"),
            request(12, {{"pin", "\"1234\""}}), reply(12, "right")});
    until(0ms);
    EXPECT_FALSE(take(request(12, {{"pin", "\"9999\""}}), 0ms));
    EXPECT_FALSE(take(request(12), 0ms));
    ASSERT_TRUE(take(request(12, {{"pin", "\"1234\""}}), 0ms));
    EXPECT_EQ(until(0ms), Log{"right"});
    ASSERT_TRUE(take(request(12, {{"pin", "\"0000\""}}), 0ms));
    EXPECT_EQ(until(0ms), Log{"wrong"});
}

TEST_F(ReplayTest, TakesAnyTextForASecretThatWasReplaced)
{
    record({request(9, {{"mode", "\"1\""}, {"pin", "\"7777\""}}), reply(9, "first"),
            request(9, {{"mode", "\"0\""}, {"pin", "\"8888\""}}), reply(9, "second")},
           1, true);
    until(0ms);
    EXPECT_FALSE(take(request(9, {{"mode", "\"2\""}, {"pin", "\"1234\""}}), 0ms));
    ASSERT_TRUE(take(request(9, {{"mode", "\"0\""}, {"pin", "\"1234\""}}), 0ms));
    EXPECT_EQ(until(0ms), Log{"second"});
}

TEST_F(ReplayTest, KeepsTheChannelsApart)
{
    record({request(4), reply(4, "answer")});
    Event other = request(4);
    other.channel = Channel::qmi;
    EXPECT_FALSE(take(other, 0ms));
}

TEST_F(ReplayTest, LetsOtherRequestsPassASlowOne)
{
    record({request(24, {}, 0), request(4, {}, 100), reply(4, "quick", 110), setting("found", 900),
            reply(24, "slow", 1000)});
    until(0ms);
    ASSERT_TRUE(take(request(24), 0ms));
    ASSERT_TRUE(take(request(4), 50ms));
    EXPECT_EQ(until(100ms), Log{"quick"});
    EXPECT_EQ(until(1000ms), (Log{"found", "slow"}));
}

// As a daemon that died left it.
TEST_F(ReplayTest, IsSilentWhereNoReplyWasRecorded)
{
    record({request(4), setting("last")});
    until(0ms);
    ASSERT_TRUE(take(request(4), 0ms));
    EXPECT_EQ(until(99'000ms), Log{"last"});
}

TEST_F(ReplayTest, RepeatsARepeatedReply)
{
    record({request(4, {}, 0), reply(4, "answer", 10), reply(4, "again", 20)});
    until(0ms);
    ASSERT_TRUE(take(request(4), 0ms));
    EXPECT_EQ(until(19ms), Log{"answer"});
    EXPECT_EQ(until(20ms), Log{"again"});
}

TEST_F(ReplayTest, CarriesOutTheStartAtOnce)
{
    record({setting("early", -110), setting("late", 300)});
    EXPECT_EQ(until(0ms), (Log{"boot", "early"}));
    EXPECT_EQ(until(499ms), Log());
    EXPECT_EQ(until(500ms), Log{"late"});
}

} // namespace
