// The simulated network: registration, selection, the list of operators, the signal.
#include "modems/simulated/signal_level.h"
#include "modems/simulated/sim_card.h"

#include <gtest/gtest.h>
#include <set>

namespace
{

using namespace sim;
using namespace std::chrono_literals;

constexpr const char *home = SimCard::home_network;

// The network in a time that passes only when a test says so.
class NetworkInTime : public testing::Test
{
protected:
    void pass(Clock::duration time)
    {
        now_ += time;
        update();
    }
    void update() { network.update(service, now_); }

    // After a change, long enough to register.
    void settle()
    {
        update();
        pass(3s);
    }
    std::string serving() const
    {
        return network.serving() ? network.serving()->numeric() : "none";
    }

    Network network{Pace(1), home};
    bool service = true;

private:
    Clock::time_point now_{};
};

TEST_F(NetworkInTime, WithoutServiceThereIsNoRegistration)
{
    service = false;
    settle();
    EXPECT_EQ(network.registration(), Registration::none);
    EXPECT_EQ(network.due(), std::nullopt);
    EXPECT_EQ(network.last(), nullptr);
}

TEST_F(NetworkInTime, RegistersAtHomeAfterAWhile)
{
    update();
    EXPECT_EQ(network.registration(), Registration::searching);
    EXPECT_EQ(*network.due(), Clock::time_point(3s));
    pass(2999ms);
    EXPECT_EQ(network.registration(), Registration::searching);
    EXPECT_EQ(network.serving(), nullptr);
    pass(1ms);
    EXPECT_EQ(network.registration(), Registration::home);
    EXPECT_EQ(serving(), "00101");
    EXPECT_EQ(network.serving()->technology, eutran);
    EXPECT_EQ(network.due(), std::nullopt);
}

TEST_F(NetworkInTime, WithoutPaceRegistersAtOnce)
{
    network = Network(Pace(0), home);
    update();
    EXPECT_EQ(network.registration(), Registration::home);
}

TEST_F(NetworkInTime, TheLastCellOutlivesTheService)
{
    settle();
    service = false;
    update();
    EXPECT_EQ(network.serving(), nullptr);
    EXPECT_EQ(network.registration(), Registration::none);
    ASSERT_NE(network.last(), nullptr);
    EXPECT_EQ(network.last()->numeric(), "00101");
}

TEST_F(NetworkInTime, ManualSelectionTakesTimeToo)
{
    settle();
    ASSERT_EQ(network.select("99970", "2"), ret_ok);
    update();
    EXPECT_EQ(network.serving(), nullptr);
    EXPECT_EQ(network.registration(), Registration::searching);
    EXPECT_EQ(network.last()->numeric(), "00101");
    pass(3s);
    EXPECT_EQ(serving(), "99970");
    EXPECT_EQ(network.last()->numeric(), "99970");
    EXPECT_EQ(network.registration(), Registration::roaming);
    EXPECT_FALSE(network.automatic());
}

TEST_F(NetworkInTime, AutomaticSelectionComesHome)
{
    network.select("00102", "7");
    settle();
    ASSERT_EQ(serving(), "00102");
    network.select_automatically();
    settle();
    EXPECT_EQ(serving(), "00101");
    EXPECT_TRUE(network.automatic());
}

TEST_F(NetworkInTime, SelectingTheServingOperatorKeepsTheRegistration)
{
    settle();
    EXPECT_EQ(network.select("00101", "7"), ret_ok);
    update();
    EXPECT_EQ(network.registration(), Registration::home);
}

TEST_F(NetworkInTime, SelectionWithoutATechnologyTakesTheBest)
{
    EXPECT_EQ(network.select("00101", ""), ret_ok);
    settle();
    EXPECT_EQ(network.serving()->technology, eutran);
    EXPECT_EQ(network.select("00101", "2"), ret_ok);
    settle();
    EXPECT_EQ(network.serving()->technology, utran);
}

TEST_F(NetworkInTime, ARefusedSelectionChangesNothing)
{
    settle();
    EXPECT_EQ(network.select("00103", "7"), ret_network_not_allowed);
    EXPECT_EQ(network.select("00104", "7"), ret_no_network_service);
    EXPECT_EQ(network.select("99970", "7"), ret_no_network_service);
    for (const char *numeric : {"", "0010", "0010100", "0010a"})
        EXPECT_EQ(network.select(numeric, "7"), ret_incorrect_parameters) << numeric;
    for (const char *technology : {"8", "-1", "LTE", "7 "})
        EXPECT_EQ(network.select("00101", technology), ret_incorrect_parameters) << technology;
    update();
    EXPECT_EQ(serving(), "00101");
    EXPECT_TRUE(network.automatic());
}

TEST_F(NetworkInTime, TheSearchModeDecidesOnTheTechnology)
{
    const std::pair<SearchMode, const char *> best[] = {{SearchMode::gsm_only, "99971"},
                                                        {SearchMode::utran_only, "00101"},
                                                        {SearchMode::eutran_only, "00101"},
                                                        {SearchMode::any, "00101"}};
    for (const auto &[mode, numeric] : best) {
        network.set_search_mode(mode);
        settle();
        EXPECT_EQ(serving(), numeric);
    }
    network.set_search_mode(SearchMode::gsm_only);
    EXPECT_EQ(network.select("00101", "7"), ret_no_network_service);
}

TEST_F(NetworkInTime, WithRoamingOffOnlyThisCountrysOperatorsAreUsed)
{
    network.set_roaming(Roaming::off);
    network.set_search_mode(SearchMode::gsm_only);
    settle();
    EXPECT_EQ(network.registration(), Registration::searching);
    EXPECT_EQ(network.due(), std::nullopt); // nothing to wait for
    network.set_search_mode(SearchMode::any);
    EXPECT_EQ(network.select("99970", "2"), ret_network_not_allowed);
    EXPECT_EQ(network.select("00102", "7"), ret_ok);
    settle();
    EXPECT_EQ(network.registration(), Registration::roaming);
}

TEST_F(NetworkInTime, SwitchingRoamingOffLeavesAForeignNetwork)
{
    network.set_roaming(Roaming::on);
    network.select("99970", "2");
    settle();
    ASSERT_EQ(serving(), "99970");
    network.set_roaming(Roaming::off);
    update();
    EXPECT_EQ(serving(), "none");
    EXPECT_EQ(network.registration(), Registration::denied);
}

TEST_F(NetworkInTime, ListsAllOperators)
{
    settle();
    const std::string list = network.provider_list();
    EXPECT_EQ(list, "+COPS: "
                    "(2,\"Test Network\",\"Test\",\"00101\",7),"
                    "(1,\"Test Network\",\"Test\",\"00101\",2),"
                    "(1,\"Harbour Test\",\"Harbour\",\"99971\",0),"
                    "(1,\"Private Campus\",\"Campus\",\"99970\",2),"
                    "(1,\"Second Test Network\",\"Second\",\"00102\",7),"
                    "(3,\"Closed Test Network\",\"Closed\",\"00103\",7)\n");
    EXPECT_LT(list.size(), 1024U); // what a reader can take
}

// Entry by entry through one buffer that nobody clears, as the reader does it.
TEST_F(NetworkInTime, NoEntryIsShorterThanTheOneBeforeIt)
{
    settle();
    const std::string list = network.provider_list();
    std::size_t longest = 0;
    for (std::size_t open = list.find('('); open != std::string::npos;
         open = list.find('(', open + 1)) {
        const std::size_t size = list.find(')', open) - open;
        EXPECT_GE(size, longest);
        longest = size;
    }
    EXPECT_GT(longest, 0U);
}

TEST(SignalLevel, IsTheSameForTheSameSeed)
{
    Network network(Pace(0), home);
    network.update(true, {});
    const Cell &cell = *network.serving();
    SignalLevel one(7), same(7), other(8);
    bool differs = false;
    for (int i = 0; i < 1000; ++i) {
        one.step(), same.step(), other.step();
        ASSERT_EQ(one.rssi(cell), same.rssi(cell));
        ASSERT_EQ(one.sinr(cell), same.sinr(cell));
        differs = differs || one.rssi(cell) != other.rssi(cell);
    }
    EXPECT_TRUE(differs);
}

TEST(SignalLevel, WandersSlowlyAroundTheMean)
{
    Network network(Pace(0), home);
    network.update(true, {});
    const Cell &cell = *network.serving();
    SignalLevel level(1);
    std::set<int> seen;
    for (int i = 0; i < 10000; ++i) {
        const int before = level.rsrp(cell);
        level.step();
        ASSERT_LE(std::abs(level.rsrp(cell) - before), 1);
        ASSERT_LE(std::abs(level.rsrp(cell) - cell.means.rsrp), 6);
        ASSERT_LE(std::abs(level.rssi(cell) - cell.means.rssi), 6);
        ASSERT_LE(std::abs(level.rsrq(cell) - cell.means.rsrq), 2);
        ASSERT_LE(std::abs(level.sinr(cell) - cell.means.sinr), 4);
        ASSERT_LE(std::abs(level.indexed_rssi(cell) - level.rssi(cell)), 1);
        ASSERT_EQ((level.indexed_rssi(cell) + 113) % 2, 0);
        seen.insert(level.rsrp(cell));
    }
    EXPECT_GE(seen.size(), 7U);
}

} // namespace
