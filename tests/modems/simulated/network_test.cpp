// The simulated network: registration, selection, the list of operators, the signal.
#include "daemons/publish/provider_file.h"
#include "modems/simulated/signal_level.h"
#include "modems/simulated/sim_card.h"

#include <gtest/gtest.h>
#include <set>

namespace
{

using namespace simulated;
using enum Technology;
using namespace std::chrono_literals;

constexpr const char *home = first_sim.home_network;

// The network on a clock that a test moves.
class FakeClockNetwork : public testing::Test
{
protected:
    void pass(Duration time)
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
    std::string serving() const { return network.serving() ? network.serving()->plmn() : "none"; }

    Network network{TimeScale(1), home};
    bool service = true;

private:
    Time now_{};
};

TEST_F(FakeClockNetwork, WithoutServiceThereIsNoRegistration)
{
    service = false;
    settle();
    EXPECT_EQ(network.registration(), Registration::none);
    EXPECT_EQ(network.next_deadline(), std::nullopt);
    EXPECT_EQ(network.last(), nullptr);
}

TEST_F(FakeClockNetwork, RegistersAtHomeAfterAWhile)
{
    update();
    EXPECT_EQ(network.registration(), Registration::searching);
    EXPECT_EQ(*network.next_deadline(), Time(3s));
    pass(2999ms);
    EXPECT_EQ(network.registration(), Registration::searching);
    EXPECT_EQ(network.serving(), nullptr);
    pass(1ms);
    EXPECT_EQ(network.registration(), Registration::home);
    EXPECT_EQ(serving(), "00101");
    EXPECT_EQ(network.serving()->technology, eutran);
    EXPECT_EQ(network.next_deadline(), std::nullopt);
}

TEST_F(FakeClockNetwork, WithATimeScaleOfZeroRegistersAtOnce)
{
    network = Network(TimeScale(0), home);
    update();
    EXPECT_EQ(network.registration(), Registration::home);
}

TEST_F(FakeClockNetwork, TheLastCellOutlivesTheService)
{
    settle();
    service = false;
    update();
    EXPECT_EQ(network.serving(), nullptr);
    EXPECT_EQ(network.registration(), Registration::none);
    ASSERT_NE(network.last(), nullptr);
    EXPECT_EQ(network.last()->plmn(), "00101");
}

TEST_F(FakeClockNetwork, ManualSelectionTakesTimeToo)
{
    settle();
    ASSERT_EQ(network.select("99970", utran), CmeError::ok);
    update();
    EXPECT_EQ(network.serving(), nullptr);
    EXPECT_EQ(network.registration(), Registration::searching);
    EXPECT_EQ(network.last()->plmn(), "00101");
    pass(3s);
    EXPECT_EQ(serving(), "99970");
    EXPECT_EQ(network.last()->plmn(), "99970");
    EXPECT_EQ(network.registration(), Registration::roaming);
    EXPECT_FALSE(network.automatic());
}

TEST_F(FakeClockNetwork, AutomaticSelectionComesHome)
{
    network.select("00102", eutran);
    settle();
    ASSERT_EQ(serving(), "00102");
    network.select_automatically();
    settle();
    EXPECT_EQ(serving(), "00101");
    EXPECT_TRUE(network.automatic());
}

TEST_F(FakeClockNetwork, SelectingTheServingOperatorKeepsTheRegistration)
{
    settle();
    EXPECT_EQ(network.select("00101", eutran), CmeError::ok);
    update();
    EXPECT_EQ(network.registration(), Registration::home);
}

TEST_F(FakeClockNetwork, SelectionWithoutATechnologyTakesTheBest)
{
    EXPECT_EQ(network.select("00101", {}), CmeError::ok);
    settle();
    EXPECT_EQ(network.serving()->technology, eutran);
    EXPECT_EQ(network.select("00101", utran), CmeError::ok);
    settle();
    EXPECT_EQ(network.serving()->technology, utran);
}

TEST_F(FakeClockNetwork, ARefusedSelectionChangesNothing)
{
    settle();
    EXPECT_EQ(network.select("00103", eutran), CmeError::network_not_allowed);
    EXPECT_EQ(network.select("00104", eutran), CmeError::no_network_service);
    EXPECT_EQ(network.select("99970", eutran), CmeError::no_network_service);
    update();
    EXPECT_EQ(serving(), "00101");
    EXPECT_TRUE(network.automatic());
}

TEST_F(FakeClockNetwork, TheSearchModeDecidesOnTheTechnology)
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
    EXPECT_EQ(network.select("00101", eutran), CmeError::no_network_service);
}

TEST_F(FakeClockNetwork, WithRoamingOffOnlyThisCountrysOperatorsAreUsed)
{
    network.set_roaming(Roaming::off);
    network.set_search_mode(SearchMode::gsm_only);
    settle();
    EXPECT_EQ(network.registration(), Registration::searching);
    EXPECT_EQ(network.next_deadline(), std::nullopt); // nothing to wait for
    network.set_search_mode(SearchMode::any);
    EXPECT_EQ(network.select("99970", utran), CmeError::network_not_allowed);
    EXPECT_EQ(network.select("00102", eutran), CmeError::ok);
    settle();
    EXPECT_EQ(network.registration(), Registration::roaming);
}

TEST_F(FakeClockNetwork, SwitchingRoamingOffLeavesAForeignNetwork)
{
    network.set_roaming(Roaming::on);
    network.select("99970", utran);
    settle();
    ASSERT_EQ(serving(), "99970");
    network.set_roaming(Roaming::off);
    update();
    EXPECT_EQ(serving(), "none");
    EXPECT_EQ(network.registration(), Registration::denied);
}

TEST_F(FakeClockNetwork, ListsAllOperators)
{
    settle();
    const std::string list = daemons::provider_list(network.operators());
    EXPECT_EQ(list, "+COPS: "
                    "(2,\"Test Network\",\"Test\",\"00101\",7),"
                    "(1,\"Test Network\",\"Test\",\"00101\",2),"
                    "(1,\"Harbour Test\",\"Harbour\",\"99971\",0),"
                    "(1,\"Private Campus\",\"Campus\",\"99970\",2),"
                    "(1,\"Second Test Network\",\"Second\",\"00102\",7),"
                    "(3,\"Closed Test Network\",\"Closed\",\"00103\",7)\n");
    EXPECT_LT(list.size(), 1024U); // what a reader can take
}

// Entry by entry through one buffer that is not cleared, as the reader does it.
TEST_F(FakeClockNetwork, NoEntryIsShorterThanTheOneBeforeIt)
{
    settle();
    const std::string list = daemons::provider_list(network.operators());
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
    Network network(TimeScale(0), home);
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

TEST(SignalLevel, DriftsSlowlyAroundTheMean)
{
    Network network(TimeScale(0), home);
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
        ASSERT_LE(std::abs(level.csq_rssi(cell) - level.rssi(cell)), 1);
        ASSERT_EQ((level.csq_rssi(cell) + 113) % 2, 0);
        seen.insert(level.rsrp(cell));
    }
    EXPECT_GE(seen.size(), 7U);
}

} // namespace
