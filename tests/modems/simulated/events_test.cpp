// The events that a scenario waits for: when the modem signals them, and that a script knows them.
#include "scenario/events.h"
#include "scenario/timeline.h"
#include "tests/support/commanded_modem.h"

namespace
{

using namespace daemons;
using namespace std::chrono_literals;

class Events : public CommandedModem
{
protected:
    Events()
    {
        modem.watch_events([this](std::string_view event) {
            events += std::string(event) + ' ';
            scenario::Words words(event);
            EXPECT_EQ(scenario::take_event(words), event);
        });
    }
    ~Events() override { modem.watch_events({}); }

    // Since the last time.
    std::string take() { return std::exchange(events, ""); }

    std::string events;
};

TEST_F(Events, FollowTheWayToAConnection)
{
    set_apn("a");
    EXPECT_EQ(take(), "");
    modem.enter_pin("1234");
    EXPECT_EQ(take(), "sim-ready ");
    clock.advance(3s);
    EXPECT_EQ(take(), "registered ");
    modem.connect();
    EXPECT_EQ(take(), "");
    clock.advance(2s);
    EXPECT_EQ(take(), "connected ");
    clock.advance(10s); // signal and uptime are no events
    EXPECT_EQ(take(), "");
    modem.disconnect();
    clock.advance(1s);
    EXPECT_EQ(take(), "disconnected ");
    run("coverage none");
    EXPECT_EQ(take(), "unregistered ");
}

TEST_F(Events, IncludeSearchesAndMessages)
{
    run("state registered");
    EXPECT_EQ(take(), "sim-ready registered ");
    std::vector<Operator> found;
    SearchThread search(*this, found);
    EXPECT_EQ(take(), "searching ");
    clock.advance(5s);
    EXPECT_EQ(take(), "search-done ");
    search.result();
    run("sms storm 3");
    EXPECT_EQ(take(), "sms ");
}

TEST_F(Events, ASteppedScenarioUsesThem)
{
    scenario::Timeline timeline(clock,
                                scenario::parse_script("when sim-ready state connected\n"
                                                       "when connected connection drop 27\n"
                                                       "when disconnected sms inject 1 x\n",
                                                       "f", commands),
                                [](const scenario::Step &step, const std::string &why) {
                                    ADD_FAILURE() << step.line << ": " << why;
                                });
    modem.watch_events([&](std::string_view event) { timeline.event(event); });
    timeline.start();
    modem.enter_pin("1234");
    EXPECT_EQ(status().last_error, CmeError::missing_apn);
    EXPECT_EQ(modem.list_messages(), CmeError::ok);
    EXPECT_EQ(status().messages.size(), 7U);
    EXPECT_TRUE(timeline.pending().empty());
    modem.watch_events({});
}

} // namespace
