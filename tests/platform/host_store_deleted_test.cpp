// A store that is deleted, moved or replaced while processes use it.
#include "in_child.h"
#include "store_errors.h"
#include "tests/support/traced_child.h"

namespace
{

namespace fs = std::filesystem;

class HostStoreDeleted : public HostStoreErrors
{
protected:
    HostStoreDeleted()
    {
        EXPECT_EQ(set("key", "saved"), 0);
        EXPECT_EQ(tarnNvramConfig_save(), 0);
        EXPECT_EQ(set("key", "running"), 0);
        file_ = database();
    }
    void expect_reported() const
    {
        expect_error(file_.string() + ": was deleted while it was in use; continuing with a new "
                                      "one, loaded from saved.conf; restart cmif-sim");
    }
    void remove_database() const
    {
        fs::remove(file_);
        fs::remove(file_.string() + "-lock");
    }

    fs::path file_;
};

TEST_F(HostStoreDeleted, IsNotWrittenToAnyMore)
{
    fs::remove_all(store());
    EXPECT_EQ(set("new", "value"), 0);
    expect_reported();
    EXPECT_EQ(get("new"), "value");
    EXPECT_EQ(get("key"), "");
    EXPECT_EQ(in_child([] { require(get("new") == "value" && get("key").empty()); }), 0);
}

TEST_F(HostStoreDeleted, IsLoadedAgainFromTheSavedConfiguration)
{
    remove_database();
    EXPECT_EQ(set("new", "value"), 0);
    EXPECT_EQ(get("key"), "saved");
    EXPECT_EQ(in_child([] { require(get("new") == "value" && get("key") == "saved"); }), 0);
    expect_reported();
}

TEST_F(HostStoreDeleted, IsLoadedAgainByAPowerCycle)
{
    remove_database();
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_EQ(get("key"), "saved");
    EXPECT_EQ(in_child([] { require(get("key") == "saved"); }), 0);
}

// A reader makes no system call, so it learns of it from the first writer.
TEST_F(HostStoreDeleted, IsLeftByReadersAfterTheFirstWrite)
{
    Child reader([] {
        require(get("key") == "running" && set("ready", "1") == 0);
        while (get("new") != "value") {}
        require(get("key") == "saved");
    });
    Child lister([] {
        require(all().size() >= 1 && set("listed", "1") == 0);
        while (all().count("new") == 0) {}
    });
    while (get("ready").empty() || get("listed").empty()) {}
    remove_database();
    EXPECT_EQ(get("key"), "running");
    EXPECT_EQ(set("new", "value"), 0);
    EXPECT_EQ(reader.wait(), 0);
    EXPECT_EQ(lister.wait(), 0);
}

TEST_F(HostStoreDeleted, AndCreatedByAnotherProcessIsThatOnes)
{
    fs::remove_all(store());
    EXPECT_EQ(in_child([] { require(set("theirs", "1") == 0); }), 0);
    EXPECT_EQ(set("ours", "2"), 0);
    const std::map<std::string, std::string> both{{"theirs", "1"}, {"ours", "2"}};
    EXPECT_EQ(all(), both);
    EXPECT_EQ(in_child([&both] { require(all() == both); }), 0);
}

TEST_F(HostStoreDeleted, AndSavedLosesNothing)
{
    fs::remove_all(store());
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(in_child([] { require(get("key") == "running"); }), 0);
}

// A process chooses its directory once: the one that looks into the moved store begins before.
class HostStoreMoved : public HostStoreErrors
{
protected:
    fs::path moved() const { return top() / "moved"; }
    fs::path go() const { return top() / "go"; }

    Child reader_{[this] {
        while (!fs::exists(go())) {}
        choose(moved());
        require(get("key") == "running" && get("new").empty());
    }};
};

TEST_F(HostStoreMoved, StaysAsItIs)
{
    ASSERT_EQ(set("key", "running"), 0);
    const std::string file = database();
    fs::rename(store(), moved());
    ASSERT_EQ(set("new", "value"), 0);
    expect_error(file + ": was deleted while it was in use; continuing with a new one, loaded from "
                        "saved.conf; restart cmif-sim");
    write(go(), "");
    EXPECT_EQ(reader_.wait(), 0);
    EXPECT_EQ(get("new"), "value");
}

TEST_F(HostStoreDeleted, WithItsParentLosesNoWriteSilently)
{
    fs::remove_all(top());
    EXPECT_EQ(set("new", "value"), -1);
    EXPECT_EQ(set("new", "value"), -1);
    expect_error_with(": was deleted while it was in use; ");
    expect_error_with(store().string() + ": No such file or directory" + store_hint);
}

TEST_F(HostStoreDeleted, AgainAndAgainIsUsedAgain)
{
    for (int round = 0; round < 20; ++round) {
        fs::remove_all(store());
        ASSERT_EQ(set("round", std::to_string(round)), 0);
        ASSERT_EQ(in_child([round] { require(get("round") == std::to_string(round)); }), 0);
    }
}

// What the check costs: one call for each write, and none for a read.
TEST_F(HostStoreDeleted, IsNoticedWithoutASystemCallOfAReader)
{
    const auto once = [] {
        require(get("key") == "running" && get("unset").empty() && set("key", "running") == 0);
    };
    EXPECT_EQ(system_calls({once,
                            [] {
                                require(get("key") == "running");
                                require(get("unset").empty());
                                require(tarnNvramConfig_match("key", "running") != 0);
                            }}),
              0);
    EXPECT_EQ(system_calls({once, [] { set("key", "other"); }}), 4); // LMDB makes 3
}

} // namespace
