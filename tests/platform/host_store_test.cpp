// What the development store keeps, for whom, and for how long.
#include "tests/support/child.h"
#include "tests/support/store_directory.h"

#include <sys/stat.h>
#include <vector>

namespace
{

namespace fs = std::filesystem;

// Runs `body` in a process that has not used the store before; its exit status.
int elsewhere(const std::function<void()> &body)
{
    return Child(body).wait();
}

void require(bool condition)
{
    if (!condition)
        _exit(1);
}

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

TEST_F(HostStore, SettingNothingRemoves)
{
    set("key", "value");
    EXPECT_EQ(set("key", ""), 0);
    EXPECT_EQ(set("never_set", ""), 0);
    EXPECT_EQ(get("key"), "");
    EXPECT_TRUE(all().empty());
}

TEST_F(HostStore, AMatchIsOfTheWholeValue)
{
    set("key", "value");
    EXPECT_NE(tarnNvramConfig_match("key", "value"), 0);
    EXPECT_EQ(tarnNvramConfig_match("key", "valu"), 0);
    EXPECT_EQ(tarnNvramConfig_match("key", "values"), 0);
    EXPECT_EQ(tarnNvramConfig_match("key", ""), 0);
    EXPECT_NE(tarnNvramConfig_match("never_set", ""), 0);
    EXPECT_EQ(tarnNvramConfig_match("never_set", "value"), 0);
}

TEST_F(HostStore, EachCallSpoilsTheLastAnswer)
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

TEST_F(HostStore, TheLongestKeyAndValueAreKept)
{
    const std::string key(host_store_key_limit, 'k'), value(host_store_value_limit, 'v');
    EXPECT_EQ(set(key, value), 0);
    EXPECT_EQ(get(key), value);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_EQ(get(key), value);
}

TEST_F(HostStore, OtherProcessesSeeASetAtOnce)
{
    EXPECT_EQ(elsewhere([] { require(set("theirs", "1") == 0); }), 0);
    EXPECT_EQ(get("theirs"), "1");
    set("ours", "2");
    EXPECT_EQ(elsewhere([] { require(get("ours") == "2"); }), 0);
    Child waiting([] {
        while (get("ours") != "3") {}
    });
    set("ours", "3");
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

TEST_F(HostStore, WhatIsSavedSurvivesAPowerCycleAndTheRestIsLost)
{
    set("saved", "1");
    set("changed", "old");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    set("changed", "new");
    set("unsaved", "1");
    set("saved", "");
    EXPECT_EQ(host_store_power_cycle(), 0);
    const std::map<std::string, std::string> expected{{"saved", "1"}, {"changed", "old"}};
    EXPECT_EQ(all(), expected);
}

TEST_F(HostStore, APowerCycleWithNothingSavedEmptiesIt)
{
    set("unsaved", "1");
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_TRUE(all().empty());
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
    EXPECT_EQ(elsewhere([] { require(set("unsaved", "1") == 0); }), 0);
    EXPECT_EQ(get("unsaved"), "1");
}

TEST_F(HostStore, AFreshStartLoadsWhatWasSaved)
{
    EXPECT_EQ(elsewhere([] {
                  require(set("saved", "1") == 0 && tarnNvramConfig_save() == 0);
                  require(set("unsaved", "1") == 0);
              }),
              0);
    const fs::path file = database();
    ASSERT_TRUE(fs::remove(file));
    fs::remove(file.string() + "-lock");
    const std::map<std::string, std::string> expected{{"saved", "1"}};
    EXPECT_EQ(all(), expected);
}

TEST_F(HostStore, DatabasesOfEarlierRunsOfTheHostAreRemoved)
{
    write(store() / "running-0000.mdb", "old");
    write(store() / "running-0000.mdb-lock", "old");
    write(store() / "notes", "mine");
    set("key", "value");
    EXPECT_FALSE(fs::exists(store() / "running-0000.mdb"));
    EXPECT_FALSE(fs::exists(store() / "running-0000.mdb-lock"));
    EXPECT_TRUE(fs::exists(store() / "notes"));
}

TEST_F(HostStore, EveryByteSurvivesSaving)
{
    std::map<std::string, std::string> expected{{" both ends ", " both ends "},
                                                {"#comment", "#comment"},
                                                {"a=b", "=a=b="},
                                                {"=", "\\"},
                                                {"\\x41", "\\x41\\n"},
                                                {"two\nlines", "\n\n"},
                                                {"\t", "\t\r\n "},
                                                {"caf\xc3\xa9", "\xff"}};
    std::string every;
    for (int byte = 1; byte < 256; ++byte) {
        every += static_cast<char>(byte);
        expected[std::string("key") + static_cast<char>(byte)] = every;
    }
    expected[every] = every;
    for (const auto &[key, value] : expected)
        ASSERT_EQ(set(key, value), 0);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_EQ(all(), expected);
}

TEST_F(HostStore, TheSavedFileIsSortedText)
{
    set("b", "two\nlines \\ \x01\x7f");
    set("a=#", "plain text, caf\xc3\xa9");
    set("#c", " edges ");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(read(saved()), "# CMIF configuration: key=value, one to a line.\n"
                             "# \\n \\r \\t \\\\ and \\xHH stand for bytes that can't be written.\n"
                             "\\x23c=\\x20edges\\x20\n"
                             "a\\x3d#=plain text, caf\xc3\xa9\n"
                             "b=two\\nlines \\\\ \\x01\\x7f\n");
}

TEST_F(HostStore, TheSavedFileMayBeEdited)
{
    write(saved(), "# by hand\r\n\r\n  second = 2 \r\nfirst=a = b # c\n\ttwice=1\ntwice=2\n"
                   "empty=\nescaped=\\x4A\\x4a\\t\nlast=no newline");
    const std::map<std::string, std::string> expected{{"second", "2"},
                                                      {"first", "a = b # c"},
                                                      {"twice", "2"},
                                                      {"escaped", "JJ\t"},
                                                      {"last", "no newline"}};
    EXPECT_EQ(all(), expected);
}

TEST_F(HostStore, TheListIsSortedAndItsReaderMayUseTheStore)
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

TEST_F(HostStore, NobodyElseCanReadIt)
{
    set("password", "secret");
    tarnNvramConfig_save();
    for (const fs::path &path : {store(), saved(), database()}) {
        struct stat found = {};
        ASSERT_EQ(stat(path.c_str(), &found), 0) << path;
        EXPECT_EQ(found.st_mode & 0077U, 0U) << path;
    }
}

TEST_F(HostStore, AProgramThatIsStartedInheritsNoDescriptor)
{
    set("key", "value");
    tarnNvramConfig_save();
    EXPECT_EQ(std::system("test -z \"$(find /proc/self/fd/ -lname '*/host-store-*')\""), 0);
}

TEST_F(HostStore, ItStaysWhereItWasWhenTheProcessGoesElsewhere)
{
    ASSERT_EQ(chdir(top().c_str()), 0);
    choose("relative");
    set("key", "value");
    ASSERT_EQ(chdir("/"), 0);
    EXPECT_EQ(host_store_directory(), top() / "relative");
    EXPECT_EQ(elsewhere([] { require(get("key") == "value"); }), 0);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_TRUE(fs::exists(top() / "relative" / "saved.conf"));
}

TEST_F(HostStore, ItLivesInTheRunTimeDirectoryByDefault)
{
    unsetenv("CMIF_STORE");
    setenv("XDG_RUNTIME_DIR", top().c_str(), 1);
    EXPECT_EQ(host_store_directory(), top() / "cmif-store");
    EXPECT_EQ(set("key", "value"), 0);
    EXPECT_TRUE(fs::exists(top() / "cmif-store"));
}

TEST_F(HostStore, ItLivesInTmpWithoutARunTimeDirectory)
{
    setenv("CMIF_STORE", "", 1);
    setenv("XDG_RUNTIME_DIR", (top() / "missing").c_str(), 1);
    EXPECT_EQ(host_store_directory(), "/tmp/cmif-store-" + std::to_string(geteuid()));
}

} // namespace
