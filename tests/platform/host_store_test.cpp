// The running configuration: its four functions, its list, and the processes that share it.
#include "in_child.h"
#include "tests/support/store_directory.h"

#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <vector>

namespace
{

TEST_F(HostStore, AnUnsetKeyReadsEmpty)
{
    EXPECT_EQ(get("never_set"), "");
}

TEST_F(HostStore, TheLastValueSetIsRead)
{
    EXPECT_EQ(set("key", "first"), 0);
    EXPECT_EQ(set("key", "second"), 0);
    EXPECT_EQ(set("key2", "other"), 0);
    EXPECT_EQ(get("key"), "second");
    EXPECT_EQ(get("key2"), "other");
}

TEST_F(HostStore, SettingAnEmptyValueRemovesTheKey)
{
    set("key", "value");
    EXPECT_EQ(set("key", ""), 0);
    EXPECT_EQ(set("never_set", ""), 0);
    EXPECT_EQ(get("key"), "");
    EXPECT_TRUE(all().empty());
}

TEST_F(HostStore, AMatchComparesTheWholeValue)
{
    set("key", "value");
    EXPECT_NE(tarnNvramConfig_match("key", "value"), 0);
    EXPECT_EQ(tarnNvramConfig_match("key", "valu"), 0);
    EXPECT_EQ(tarnNvramConfig_match("key", "values"), 0);
    EXPECT_EQ(tarnNvramConfig_match("key", ""), 0);
    EXPECT_NE(tarnNvramConfig_match("never_set", ""), 0);
    EXPECT_EQ(tarnNvramConfig_match("never_set", "value"), 0);
}

TEST_F(HostStore, EachCallPoisonsTheLastAnswer)
{
    set("key", "value");
    const char *const answer = tarnNvramConfig_get("key");
    EXPECT_STREQ(answer, "value");
    tarnNvramConfig_match("key", "value");
    EXPECT_STREQ(answer, "#####");
    tarnNvramConfig_get("key");
    set("other", "x");
    EXPECT_STREQ(answer, "#####");
    tarnNvramConfig_get("key");
    tarnNvramConfig_save();
    EXPECT_STREQ(answer, "#####");
    EXPECT_EQ(tarnNvramConfig_get("other"), answer);
    EXPECT_STREQ(answer, "x");
    tarnNvramConfig_get("never_set");
    EXPECT_STREQ(answer, "");
    tarnNvramConfig_save();
    EXPECT_STREQ(answer, "#");
    tarnNvramConfig_get("key");
    tarnNvramConfig_get("never_set");
    tarnNvramConfig_save();
    EXPECT_STREQ(answer, "#"); // and nothing of the longer one before it
}

TEST_F(HostStore, AnAnswerMayBeAnArgument)
{
    set("a", "b");
    set("b", "value");
    EXPECT_STREQ(tarnNvramConfig_get(tarnNvramConfig_get("a")), "value");
    EXPECT_EQ(tarnNvramConfig_set("c", tarnNvramConfig_get("b")), 0);
    EXPECT_EQ(get("c"), "value");
    EXPECT_NE(tarnNvramConfig_match("c", tarnNvramConfig_get("b")), 0);
}

TEST_F(HostStore, OtherProcessesSeeASetImmediately)
{
    EXPECT_EQ(in_child([] { require(set("child", "1") == 0); }), 0);
    EXPECT_EQ(get("child"), "1");
    set("parent", "2");
    EXPECT_EQ(in_child([] { require(get("parent") == "2"); }), 0);
    Child waiting([] {
        while (get("parent") != "3") {}
    });
    set("parent", "3");
    EXPECT_EQ(waiting.wait(), 0);
}

TEST_F(HostStore, BothSidesOfAForkUseIt)
{
    set("before", "1");
    const auto use = [](const std::string &key) {
        for (int i = 0; i < 500; ++i) {
            require(set(key, std::to_string(i)) == 0);
            require(get(key) == std::to_string(i));
        }
    };
    Child child([&use] {
        require(get("before") == "1");
        Child grandchild([&use] { use("grandchild"); });
        use("child");
        require(grandchild.wait() == 0);
        require(tarnNvramConfig_save() == 0);
    });
    use("parent");
    EXPECT_EQ(child.wait(), 0);
    const std::map<std::string, std::string> expected{
        {"before", "1"}, {"child", "499"}, {"grandchild", "499"}, {"parent", "499"}};
    EXPECT_EQ(all(), expected);
    EXPECT_EQ(set("after", "1"), 0);
}

// Leak checkers run when a process exits.
TEST_F(HostStore, AForkedChildThatExitsHasNoLeak)
{
    set("before", "1");
    const auto use_and_exit = [] {
        require(get("before") == "1");
        Child grandchild([] {
            require(get("before") == "1");
            std::exit(0);
        });
        require(grandchild.wait() == 0);
        std::exit(0);
    };
    EXPECT_EQ(in_child(use_and_exit), 0);
}

TEST_F(HostStore, RunningProcessesSeeAPowerCycle)
{
    set("unsaved", "1");
    Child other([] {
        require(get("unsaved") == "1");
        require(set("ready", "1") == 0);
        while (!get("unsaved").empty()) {}
        require(set("after", "1") == 0);
    });
    while (get("ready") != "1") {}
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(get("after"), "1");
}

TEST_F(HostStore, TheRunningConfigurationOutlivesItsProcesses)
{
    EXPECT_EQ(in_child([] { require(set("unsaved", "1") == 0); }), 0);
    EXPECT_EQ(get("unsaved"), "1");
}

double seconds(const timespec &time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

timespec now()
{
    timespec time = {};
    clock_gettime(CLOCK_REALTIME, &time);
    return time;
}

// Half a second more or less than full ones, so that the fractions count.
TEST_F(HostStore, ItsAgeIsTheTimeSinceTheLastChange)
{
    EXPECT_LT(host_store_age(), 0);
    EXPECT_FALSE(std::filesystem::exists(store()));
    set("key", "value");
    const timespec before = now(),
                   changed{before.tv_sec - 100, (before.tv_nsec + 500000000) % 1000000000};
    const timespec times[] = {changed, changed};
    ASSERT_EQ(utimensat(AT_FDCWD, database().c_str(), times, 0), 0);
    const double age = host_store_age();
    EXPECT_GE(age, seconds(before) - seconds(changed) - 0.001);
    EXPECT_LE(age, seconds(now()) - seconds(changed) + 0.001);
    const timespec later{before.tv_sec + 3600, 0}, future[] = {later, later};
    ASSERT_EQ(utimensat(AT_FDCWD, database().c_str(), future, 0), 0);
    EXPECT_EQ(host_store_age(), 0);
}

TEST_F(HostStore, TheListIsSortedAndItsCallbackMayUseTheStore)
{
    for (const char *key : {"b", "c", "a", "B"})
        set(key, "1");
    std::vector<std::string> keys;
    const auto use = [](const char *key, const char *, void *context) {
        static_cast<std::vector<std::string> *>(context)->emplace_back(key);
        set(std::string("z") + key, get(key));
    };
    EXPECT_EQ(host_store_list(use, &keys), 0);
    EXPECT_EQ(keys, (std::vector<std::string>{"B", "a", "b", "c"}));
    EXPECT_EQ(all().size(), 8U);
}

} // namespace
