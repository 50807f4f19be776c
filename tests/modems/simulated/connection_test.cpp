// The data connection in a time of its own: states, delays, uptime, addresses, and why it ends.
#include "modems/simulated/connection.h"

#include <gtest/gtest.h>

namespace
{

using namespace sim;
using namespace std::chrono_literals;

using State = ConnectionState;

class ConnectionInTime : public testing::Test
{
protected:
    ConnectionInTime() { connection.modify({"one.example", "", "", 0, 3, 0}, now); }

    void pass(Clock::duration time)
    {
        now += time;
        connection.update(refusal, now);
    }
    void connect()
    {
        ASSERT_EQ(connection.start(ret_ok, now), ret_ok);
        pass(2s);
        ASSERT_EQ(connection.state(), State::connected);
    }

    Connection connection{Pace(1)};
    RetCode refusal = ret_ok;
    Clock::time_point now{};
};

TEST_F(ConnectionInTime, IsDownAtFirst)
{
    pass(1h);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.due(), std::nullopt);
    EXPECT_EQ(connection.uptime(), 0s);
    EXPECT_EQ(connection.ipv4_address(), "");
    EXPECT_EQ(connection.ipv6_address(), "");
    EXPECT_EQ(connection.last_apn(), "");
}

TEST_F(ConnectionInTime, ComesUpAfterAWhile)
{
    EXPECT_EQ(connection.start(ret_ok, now), ret_ok);
    EXPECT_EQ(connection.state(), State::on_the_way);
    EXPECT_EQ(connection.due(), now + 2s);
    pass(1999ms);
    EXPECT_EQ(connection.state(), State::on_the_way);
    EXPECT_EQ(connection.ipv4_address(), "");
    EXPECT_EQ(connection.last_apn(), "");
    pass(1ms);
    EXPECT_EQ(connection.state(), State::connected);
    EXPECT_EQ(connection.ipv4_address(), "192.0.2.10");
    EXPECT_EQ(connection.ipv6_address(), "2001:db8:0:1::1");
    EXPECT_EQ(connection.last_apn(), "one.example");
}

TEST_F(ConnectionInTime, CountsTheSecondsThatItIsUp)
{
    connect();
    EXPECT_EQ(connection.uptime(), 0s);
    EXPECT_EQ(connection.due(), now + 1s);
    pass(999ms);
    EXPECT_EQ(connection.uptime(), 0s);
    pass(1ms);
    EXPECT_EQ(connection.uptime(), 1s);
    EXPECT_EQ(connection.due(), now + 1s);
    pass(3600500ms);
    EXPECT_EQ(connection.uptime(), 3601s);
    EXPECT_EQ(connection.due(), now + 500ms);
    connection.stop(now);
    EXPECT_EQ(connection.uptime(), 0s);
}

TEST_F(ConnectionInTime, ThePaceScalesTheWayAndNotTheUptime)
{
    connection = Connection(Pace(0.5));
    connection.modify({"one.example", "", "", 0, 0, 0}, now);
    connection.start(ret_ok, now);
    pass(999ms);
    EXPECT_EQ(connection.state(), State::on_the_way);
    pass(1ms);
    EXPECT_EQ(connection.state(), State::connected);
    pass(10s);
    EXPECT_EQ(connection.uptime(), 10s);
}

TEST_F(ConnectionInTime, AStopTakesAWhileToo)
{
    connect();
    connection.stop(now);
    EXPECT_EQ(connection.state(), State::on_the_way);
    EXPECT_EQ(connection.ipv4_address(), "");
    pass(999ms);
    EXPECT_EQ(connection.state(), State::on_the_way);
    pass(1ms);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_apn(), "one.example");
}

TEST_F(ConnectionInTime, ASecondStartOrStopChangesNothing)
{
    connection.start(ret_ok, now);
    pass(1s);
    EXPECT_EQ(connection.start(ret_ok, now), ret_ok);
    pass(1s);
    EXPECT_EQ(connection.state(), State::connected);
    pass(5s);
    EXPECT_EQ(connection.start(ret_ok, now), ret_ok);
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

TEST_F(ConnectionInTime, TurnsRoundOnTheWay)
{
    connection.start(ret_ok, now);
    pass(1s);
    connection.stop(now);
    pass(1s);
    EXPECT_EQ(connection.state(), State::disconnected);
    connect();
    connection.stop(now);
    connection.start(ret_ok, now);
    pass(1s);
    EXPECT_EQ(connection.state(), State::on_the_way);
    pass(1s);
    EXPECT_EQ(connection.state(), State::connected);
}

TEST_F(ConnectionInTime, ARefusedStartSaysWhy)
{
    EXPECT_EQ(connection.start(ret_sim_pin_required, now), ret_sim_pin_required);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), ret_sim_pin_required);
    EXPECT_EQ(connection.start(ret_ok, now), ret_ok);
    EXPECT_EQ(connection.last_error(), ret_ok);
}

TEST_F(ConnectionInTime, NeedsAnAccessPointName)
{
    connection.modify({}, now);
    EXPECT_EQ(connection.start(ret_not_allowed, now), ret_not_allowed); // the first hindrance
    EXPECT_EQ(connection.start(ret_ok, now), ret_missing_apn);
    EXPECT_EQ(connection.last_error(), ret_missing_apn);
    connection.stop(now);
    EXPECT_EQ(connection.last_error(), ret_ok);
}

TEST_F(ConnectionInTime, EndsAtOnceWithTheService)
{
    connect();
    refusal = ret_no_network_service;
    pass(10s);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), ret_no_network_service);
    EXPECT_EQ(connection.uptime(), 0s);
    EXPECT_EQ(connection.ipv4_address(), "");
    EXPECT_EQ(connection.due(), std::nullopt);
    refusal = ret_ok;
    pass(1h);
    EXPECT_EQ(connection.state(), State::disconnected); // and stays down
    EXPECT_EQ(connection.last_error(), ret_no_network_service);
}

TEST_F(ConnectionInTime, EndsOnItsWayUpAsWell)
{
    connection.start(ret_ok, now);
    refusal = ret_sim_failure;
    pass(2s);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), ret_sim_failure);
    EXPECT_EQ(connection.last_apn(), "");
}

TEST_F(ConnectionInTime, OneThatWasToEndEndsWithoutAnError)
{
    connect();
    connection.stop(now);
    refusal = ret_not_allowed;
    pass(0s);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), ret_ok);
}

TEST_F(ConnectionInTime, ANewProfileMakesItAnew)
{
    connect();
    pass(5s);
    connection.modify({"two.example", "me", "secret", 2, 3, 1}, now);
    EXPECT_EQ(connection.state(), State::on_the_way);
    EXPECT_EQ(connection.uptime(), 0s);
    EXPECT_EQ(connection.profile().apn, "two.example");
    pass(2999ms);
    EXPECT_EQ(connection.state(), State::on_the_way);
    pass(1ms);
    EXPECT_EQ(connection.state(), State::connected);
    EXPECT_EQ(connection.last_apn(), "two.example");
    EXPECT_EQ(connection.ipv4_address(), "192.0.2.11");
    EXPECT_EQ(connection.ipv6_address(), "2001:db8:0:2::1");
}

TEST_F(ConnectionInTime, AProfileWithoutANameEndsIt)
{
    connect();
    connection.modify({}, now);
    pass(1s);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), ret_missing_apn);
}

TEST_F(ConnectionInTime, AProfileIsKeptWhileDown)
{
    connection.modify({"two.example", "", "", 0, 0, 0}, now);
    EXPECT_EQ(connection.state(), State::disconnected);
    connect();
    EXPECT_EQ(connection.last_apn(), "two.example");
    connection.stop(now);
    connection.modify({"three.example", "", "", 0, 0, 0}, now);
    pass(1s);
    EXPECT_EQ(connection.state(), State::disconnected);
}

TEST_F(ConnectionInTime, AddressesFollowThePdpType)
{
    const struct {
        int pdp;
        bool ipv4, ipv6;
    } rows[] = {{0, true, false}, {1, true, false}, {2, false, true}, {3, true, true}};
    for (const auto &row : rows) {
        connection.stop(now);
        connection.modify({"one.example", "", "", 0, row.pdp, 0}, now);
        connect();
        EXPECT_EQ(connection.ipv4_address() != "", row.ipv4) << row.pdp;
        EXPECT_EQ(connection.ipv6_address() != "", row.ipv6) << row.pdp;
    }
}

TEST_F(ConnectionInTime, AddressesStayInTheirRanges)
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

TEST_F(ConnectionInTime, StartsByItselfOnceWhenItCan)
{
    connection.start_when_possible();
    refusal = ret_sim_pin_required;
    pass(1h);
    EXPECT_EQ(connection.state(), State::disconnected);
    EXPECT_EQ(connection.last_error(), ret_ok); // it only waits
    refusal = ret_ok;
    pass(0s);
    EXPECT_EQ(connection.state(), State::on_the_way);
    pass(2s);
    EXPECT_EQ(connection.state(), State::connected);
    connection.stop(now);
    pass(1h);
    EXPECT_EQ(connection.state(), State::disconnected);
}

TEST_F(ConnectionInTime, AStopCallsTheStartByItselfOff)
{
    connection.start_when_possible();
    connection.stop(now);
    pass(1h);
    EXPECT_EQ(connection.state(), State::disconnected);
}

} // namespace
