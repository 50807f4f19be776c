// With a manual clock the same seed and scenario give the same results each time: what the modem
// reports, and every value that the store is given, in its order.
#include "daemons/publish/publisher.h"
#include "platform/tarn_nvram_config.h"
#include "scenario/timeline.h"
#include "tests/support/commanded_modem.h"

#include <algorithm>
#include <map>

namespace
{

using namespace daemons;
using namespace std::chrono_literals;

std::map<std::string, std::string> values;
std::string writes;
std::mutex store_mutex;

} // namespace

// The store of this test: it keeps the order of the writes.
extern "C" {
const char *tarnNvramConfig_get(const char *key)
{
    static thread_local std::string answer;
    const std::lock_guard lock(store_mutex);
    answer = values[key];
    return answer.c_str();
}
int tarnNvramConfig_set(const char *key, const char *value)
{
    const std::lock_guard lock(store_mutex);
    values[key] = value;
    writes.append(key).append("=").append(value).append("\n");
    return 0;
}
int tarnNvramConfig_match(const char *key, const char *value)
{
    const std::lock_guard lock(store_mutex);
    return values[key] == value;
}
int tarnNvramConfig_save()
{
    return 0;
}
}

namespace
{

constexpr const char *script = "at 1s state registered\n"
                               "when registered state connected\n"
                               "every 3s handover\n"
                               "at 10s signal rsrp=-118 sinr=-3\n"
                               "at 12s sms storm 5\n"
                               "at 20s coverage none\n"
                               "at 25s coverage full\n"
                               "when disconnected deny 15\n"
                               "at 40s allow\n"
                               "at 41s signal auto\n"
                               "at 50s modem reset 3s\n"
                               "at 55s state connected\n"
                               "when search-done sms inject 1 found\n"
                               "at 70s modem silent 5s\n";

// A caller that a request wakes up while the clock goes on, and one that asks all the time.
std::string run(unsigned seed)
{
    values.clear();
    writes.clear();
    {
        scenario::ManualClock clock;
        simulated::Modem modem(clock, seed);
        Publisher publisher(modem);
        std::string failures;
        scenario::Timeline timeline(
            clock, scenario::parse_script(script, "f", simulated::modem_commands(modem)),
            [&](const scenario::Step &step, const std::string &why) {
                failures += std::to_string(step.line) + ": " + why + "\n";
            });
        modem.watch_events([&](std::string_view event) { timeline.event(event); });
        timeline.start();
        clock.advance(5s);
        modem.delete_messages(0, DeleteFlag::all); // they take long to publish
        clock.advance(10s);
        clock.begin_work();
        std::thread daemon([&] {
            const scenario::Work work(clock, scenario::Work::Begun{});
            for (int i = 0; i < 4; ++i) {
                std::vector<Operator> found;
                failures += std::to_string(static_cast<int>(modem.search(found))) + " " +
                            std::to_string(found.size()) + "\n";
                publisher.publish();
                modem.list_messages();
                modem.set_roaming(i % 2 == 0 ? Roaming::off : Roaming::on);
                publisher.publish();
            }
        });
        EXPECT_TRUE(clock.advance(65s));
        daemon.join();
        modem.watch_events({});
        writes += failures;
    }
    return writes;
}

// The rest of both from where they differ on, the beginning of it.
std::string difference(const std::string &one, const std::string &other)
{
    const auto [at, in_other] = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
    if (at == one.end() && in_other == other.end())
        return "";
    constexpr std::size_t shown = 300;
    const auto place = static_cast<std::size_t>(at - one.begin());
    return one.substr(place, shown) + "\n=====\n" + other.substr(place, shown);
}

TEST(Repeatability, TheSameSeedAndScenarioGiveTheSameWrites)
{
    const std::string first = run(1);
    EXPECT_GT(first.size(), 10'000U);
    EXPECT_NE(first.find("lte_qmi_connection_status=3\n"), std::string::npos);
    EXPECT_NE(first.find("no handover"), std::string::npos); // while there was no network
    for (int i = 1; i < 100; ++i)
        ASSERT_EQ(difference(first, run(1)), "") << i;
    EXPECT_NE(difference(first, run(2)), "");
}

} // namespace
