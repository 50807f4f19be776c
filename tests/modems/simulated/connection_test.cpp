// The data connection on a fake clock: states, delays, uptime, addresses, and why it ends.
#include "modems/simulated/connection.h"

#include <gtest/gtest.h>

namespace
{

using namespace daemons;
using namespace simulated;
using namespace std::chrono_literals;

using State = ConnectionState;

class FakeClockConnection : public testing::Test
{
protected:
    FakeClockConnection()
    {
        connection.modify({"one.example", "", "", Authentication::none, PdpType::ipv4v6}, now);
    }

    void pass(Duration time)
    {
        now += time;
        connection.update(refusal, now);
    }
    void connect()
    {
        ASSERT_EQ(connection.start(CmeError::ok, now), CmeError::ok);
        pass(2s);
        ASSERT_EQ(connection.state(), State::connected);
    }

    Connection connection{TimeScale(1)};
    CmeError refusal = CmeError::ok;
    Time now{};
};

TEST_F(FakeClockConnection, IsDownAtFirst)
{
    pass(1h);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.next_deadline(), std::nullopt);
    EXPECT_EQ(connection.uptime(), 0s);
    EXPECT_EQ(connection.ipv4_address(), "");
    EXPECT_EQ(connection.ipv6_address(), "");
    EXPECT_EQ(connection.last_apn(), "");
}

TEST_F(FakeClockConnection, ComesUpAfterAWhile)
{
    EXPECT_EQ(connection.start(CmeError::ok, now), CmeError::ok);
    EXPECT_EQ(connection.state(), State::transitioning);
    EXPECT_EQ(connection.next_deadline(), now + 2s);
    pass(1999ms);
    EXPECT_EQ(connection.state(), State::transitioning);
    EXPECT_EQ(connection.ipv4_address(), "");
    EXPECT_EQ(connection.last_apn(), "");
    pass(1ms);
    EXPECT_EQ(connection.state(), State::connected);
    EXPECT_EQ(connection.ipv4_address(), "192.0.2.10");
    EXPECT_EQ(connection.ipv6_address(), "2001:db8:0:1::1");
    EXPECT_EQ(connection.last_apn(), "one.example");
}

TEST_F(FakeClockConnection, CountsTheSecondsThatItIsUp)
{
    connect();
    EXPECT_EQ(connection.uptime(), 0s);
    EXPECT_EQ(connection.next_deadline(), now + 1s);
    pass(999ms);
    EXPECT_EQ(connection.uptime(), 0s);
    pass(1ms);
    EXPECT_EQ(connection.uptime(), 1s);
    EXPECT_EQ(connection.next_deadline(), now + 1s);
    pass(3600500ms);
    EXPECT_EQ(connection.uptime(), 3601s);
    EXPECT_EQ(connection.next_deadline(), now + 500ms);
    connection.stop(now);
    EXPECT_EQ(connection.uptime(), 0s);
}

TEST_F(FakeClockConnection, TheTimeScaleAppliesToTransitionsAndNotToUptime)
{
    connection = Connection(TimeScale(0.5));
    connection.modify({"one.example", "", ""}, now);
    connection.start(CmeError::ok, now);
    pass(999ms);
    EXPECT_EQ(connection.state(), State::transitioning);
    pass(1ms);
    EXPECT_EQ(connection.state(), State::connected);
    pass(10s);
    EXPECT_EQ(connection.uptime(), 10s);
}

TEST_F(FakeClockConnection, AStopTakesAWhileToo)
{
    connect();
    connection.stop(now);
    EXPECT_EQ(connection.state(), State::transitioning);
    EXPECT_EQ(connection.ipv4_address(), "");
    pass(999ms);
    EXPECT_EQ(connection.state(), State::transitioning);
    pass(1ms);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_apn(), "one.example");
}

TEST_F(FakeClockConnection, ASecondStartOrStopChangesNothing)
{
    connection.start(CmeError::ok, now);
    pass(1s);
    EXPECT_EQ(connection.start(CmeError::ok, now), CmeError::ok);
    pass(1s);
    EXPECT_EQ(connection.state(), State::connected);
    pass(5s);
    EXPECT_EQ(connection.start(CmeError::ok, now), CmeError::ok);
    EXPECT_EQ(connection.state(), State::connected);
    EXPECT_EQ(connection.uptime(), 5s);
    connection.stop(now);
    pass(500ms);
    connection.stop(now);
    pass(500ms);
    EXPECT_EQ(connection.state(), State::disconnected);
    connection.stop(now);
    EXPECT_EQ(connection.state(), State::disconnected);
}

TEST_F(FakeClockConnection, ReversesDirectionDuringATransition)
{
    connection.start(CmeError::ok, now);
    pass(1s);
    connection.stop(now);
    pass(1s);
    EXPECT_EQ(connection.state(), State::disconnected);
    connect();
    connection.stop(now);
    connection.start(CmeError::ok, now);
    pass(1s);
    EXPECT_EQ(connection.state(), State::transitioning);
    pass(1s);
    EXPECT_EQ(connection.state(), State::connected);
}

TEST_F(FakeClockConnection, ARefusedStartReportsWhy)
{
    EXPECT_EQ(connection.start(CmeError::sim_pin_required, now), CmeError::sim_pin_required);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), CmeError::sim_pin_required);
    EXPECT_EQ(connection.start(CmeError::ok, now), CmeError::ok);
    EXPECT_EQ(connection.last_error(), CmeError::ok);
}

TEST_F(FakeClockConnection, NeedsAnAccessPointName)
{
    connection.modify({}, now);
    EXPECT_EQ(connection.start(CmeError::not_allowed, now),
              CmeError::not_allowed); // the first hindrance
    EXPECT_EQ(connection.start(CmeError::ok, now), CmeError::missing_apn);
    EXPECT_EQ(connection.last_error(), CmeError::missing_apn);
    connection.stop(now);
    EXPECT_EQ(connection.last_error(), CmeError::ok);
}

TEST_F(FakeClockConnection, DropsAtOnceWithTheService)
{
    connect();
    refusal = CmeError::no_network_service;
    pass(10s);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), CmeError::no_network_service);
    EXPECT_EQ(connection.uptime(), 0s);
    EXPECT_EQ(connection.ipv4_address(), "");
    EXPECT_EQ(connection.next_deadline(), std::nullopt);
    refusal = CmeError::ok;
    pass(1h);
    EXPECT_EQ(connection.state(), State::disconnected); // and stays down
    EXPECT_EQ(connection.last_error(), CmeError::no_network_service);
}

TEST_F(FakeClockConnection, DropsWhileConnectingToo)
{
    connection.start(CmeError::ok, now);
    refusal = CmeError::sim_failure;
    pass(2s);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), CmeError::sim_failure);
    EXPECT_EQ(connection.last_apn(), "");
}

TEST_F(FakeClockConnection, ADropWhileDisconnectingIsNotAnError)
{
    connect();
    connection.stop(now);
    refusal = CmeError::not_allowed;
    pass(0s);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), CmeError::ok);
}

TEST_F(FakeClockConnection, ANewProfileReconnects)
{
    connect();
    pass(5s);
    connection.modify(
        {"two.example", "me", "secret", Authentication::chap, PdpType::ipv4v6, IpFamily::ipv6},
        now);
    EXPECT_EQ(connection.state(), State::transitioning);
    EXPECT_EQ(connection.uptime(), 0s);
    EXPECT_EQ(connection.profile().apn, "two.example");
    pass(2999ms);
    EXPECT_EQ(connection.state(), State::transitioning);
    pass(1ms);
    EXPECT_EQ(connection.state(), State::connected);
    EXPECT_EQ(connection.last_apn(), "two.example");
    EXPECT_EQ(connection.ipv4_address(), "192.0.2.11");
    EXPECT_EQ(connection.ipv6_address(), "2001:db8:0:2::1");
}

TEST_F(FakeClockConnection, AProfileWithoutANameEndsIt)
{
    connect();
    connection.modify({}, now);
    pass(1s);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), CmeError::missing_apn);
}

TEST_F(FakeClockConnection, AProfileIsKeptWhileDown)
{
    connection.modify({"two.example", "", ""}, now);
    EXPECT_EQ(connection.state(), State::disconnected);
    connect();
    EXPECT_EQ(connection.last_apn(), "two.example");
    connection.stop(now);
    connection.modify({"three.example", "", ""}, now);
    pass(1s);
    EXPECT_EQ(connection.state(), State::disconnected);
}

TEST_F(FakeClockConnection, AddressesFollowThePdpType)
{
    const struct {
        PdpType pdp;
        bool ipv4, ipv6;
    } rows[] = {{PdpType::ip, true, false},
                {PdpType::ppp, true, false},
                {PdpType::ipv6, false, true},
                {PdpType::ipv4v6, true, true}};
    for (const auto &row : rows) {
        connection.stop(now);
        connection.modify({"one.example", "", "", Authentication::none, row.pdp}, now);
        connect();
        EXPECT_EQ(connection.ipv4_address() != "", row.ipv4) << static_cast<int>(row.pdp);
        EXPECT_EQ(connection.ipv6_address() != "", row.ipv6) << static_cast<int>(row.pdp);
    }
}

TEST_F(FakeClockConnection, AddressesStayInTheirRanges)
{
    for (int i = 0; i < 300; ++i) {
        connection.stop(now);
        connect();
        const std::string last = connection.ipv4_address().substr(sizeof "192.0.2." - 1);
        EXPECT_GE(std::stoi(last), 10);
        EXPECT_LE(std::stoi(last), 209);
    }
    EXPECT_EQ(connection.ipv6_address(), "2001:db8:0:12c::1");
}

TEST_F(FakeClockConnection, AutoConnectsOnceWhenPossible)
{
    connection.start_when_possible();
    refusal = CmeError::sim_pin_required;
    pass(1h);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), CmeError::ok); // it only waits
    refusal = CmeError::ok;
    pass(0s);
    EXPECT_EQ(connection.state(), State::transitioning);
    pass(2s);
    EXPECT_EQ(connection.state(), State::connected);
    connection.stop(now);
    pass(1h);
    EXPECT_EQ(connection.state(), State::disconnected);
}

TEST_F(FakeClockConnection, AStopCancelsThePendingAutoConnect)
{
    connection.start_when_possible();
    connection.stop(now);
    pass(1h);
    EXPECT_EQ(connection.state(), State::disconnected);
}

} // namespace
