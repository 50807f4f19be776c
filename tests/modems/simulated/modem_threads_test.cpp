// The simulated modem's own thread, its verbs from several threads, and its end.
#include "modems/simulated/modem.h"
#include "scenario/real_clock.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace
{

using namespace daemons;
using namespace std::chrono_literals;

bool eventually(const std::function<bool()> &condition)
{
    for (int i = 0; i < 5000 && !condition(); ++i)
        std::this_thread::sleep_for(1ms);
    return condition();
}

TEST(ModemThreads, TimePassesAndItsChangesAreSignalled)
{
    scenario::RealClock clock{scenario::TimeScale(0.01)};
    simulated::Modem modem(clock, 1);
    std::atomic<int> changes = 0;
    modem.watch([&] {
        ++changes;
        EXPECT_TRUE(modem.status().sim.has_value()); // may be asked from here
    });
    EXPECT_EQ(modem.enter_pin("1234"), CmeError::ok);
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(eventually([&] { return modem.status().registration == Registration::home; }));
    EXPECT_TRUE(eventually([&] { return changes > 1; }));
    modem.watch({});
    const int before = changes;
    EXPECT_EQ(modem.set_roaming(Roaming::off), CmeError::ok);
    EXPECT_EQ(changes, before);
}

TEST(ModemThreads, TwoSearchesAreOne)
{
    scenario::RealClock clock{scenario::TimeScale(0.05)};
    simulated::Modem modem(clock, 1);
    ASSERT_EQ(modem.enter_pin("1234"), CmeError::ok);
    std::vector<Operator> found[2];
    const auto before = std::chrono::steady_clock::now();
    std::thread other([&] { EXPECT_EQ(modem.search(found[0]), CmeError::ok); });
    EXPECT_TRUE(eventually([&] { return modem.status().search == CmeError::search_running; }));
    EXPECT_EQ(modem.search(found[1]), CmeError::ok);
    other.join();
    EXPECT_GE(std::chrono::steady_clock::now() - before, 250ms);
    EXPECT_EQ(modem.status().search, CmeError::ok);
    EXPECT_EQ(found[0].size(), 6U);
    EXPECT_EQ(found[1].size(), 6U);
}

TEST(ModemThreads, AStopEndsASearchAndRefusesEveryVerb)
{
    scenario::RealClock clock{scenario::TimeScale(1000)};
    simulated::Modem modem(clock, 1);
    ASSERT_EQ(modem.enter_pin("1234"), CmeError::ok);
    std::vector<Operator> found;
    std::thread other([&] { EXPECT_EQ(modem.search(found), CmeError::no_connection_to_phone); });
    EXPECT_TRUE(eventually([&] { return modem.status().search == CmeError::search_running; }));
    modem.stop();
    other.join();
    EXPECT_EQ(modem.search(found), CmeError::no_connection_to_phone);
    EXPECT_EQ(modem.enter_pin("1234"), CmeError::no_connection_to_phone);
    EXPECT_TRUE(found.empty());
}

} // namespace
