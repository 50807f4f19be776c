// What the development store says on standard error, and does, when something is wrong.
#include "tests/support/child.h"
#include "tests/support/redirect.h"
#include "tests/support/store_directory.h"

#include <sys/mount.h>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

class HostStoreTrouble : public HostStore
{
protected:
    // The line, spoken once, and whatever else came with it.
    void expect_said(const std::string &line) const
    {
        EXPECT_EQ(errors_.bytes(), "cmif store: " + line + "\n");
    }
    void expect_silence() const { EXPECT_EQ(errors_.bytes(), ""); }
    void expect_said_part(const std::string &part) const
    {
        const std::string said = errors_.bytes();
        EXPECT_NE(said.find(part), std::string::npos) << said;
    }

    // Nothing works, twice, and one line says why.
    void expect_unusable(const std::string &line) const
    {
        for (int times = 0; times < 2; ++times) {
            EXPECT_STREQ(tarnNvramConfig_get("key"), "");
            EXPECT_EQ(set("key", "value"), -1);
            EXPECT_EQ(tarnNvramConfig_match("key", ""), 0);
            EXPECT_EQ(tarnNvramConfig_save(), -1);
            EXPECT_EQ(host_store_power_cycle(), -1);
            EXPECT_EQ(host_store_list([](const char *, const char *, void *) {}, nullptr), -1);
        }
        expect_said(line);
    }

private:
    Redirect errors_{STDERR_FILENO};
};

constexpr const char *choose_another = "; set CMIF_STORE to a directory that you can write";

TEST_F(HostStoreTrouble, NothingIsSaidWhenAllIsWell)
{
    EXPECT_EQ(get("never_set"), "");
    EXPECT_EQ(set("key", "value"), 0);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(host_store_power_cycle(), 0);
    expect_silence();
}

TEST_F(HostStoreTrouble, GetOfANullKey)
{
    EXPECT_STREQ(tarnNvramConfig_get(nullptr), "");
    EXPECT_STREQ(tarnNvramConfig_get(nullptr), "");
    expect_said("tarnNvramConfig_get: the key is a null pointer; nothing is done");
}

TEST_F(HostStoreTrouble, GetOfAnEmptyKey)
{
    EXPECT_STREQ(tarnNvramConfig_get(""), "");
    expect_said("tarnNvramConfig_get: the key is empty; nothing is done; name one");
}

TEST_F(HostStoreTrouble, GetOfAKeyThatIsTooLong)
{
    EXPECT_EQ(get(std::string(host_store_key_limit + 1, 'k')), "");
    expect_said("tarnNvramConfig_get: the key has more than 255 bytes; nothing is done; "
                "shorten it");
}

TEST_F(HostStoreTrouble, SetOfANullKey)
{
    EXPECT_EQ(tarnNvramConfig_set(nullptr, "value"), -1);
    expect_said("tarnNvramConfig_set: the key is a null pointer; nothing is done");
}

TEST_F(HostStoreTrouble, SetOfANullValue)
{
    set("key", "old");
    EXPECT_EQ(tarnNvramConfig_set("key", nullptr), -1);
    EXPECT_EQ(get("key"), "old");
    expect_said("tarnNvramConfig_set: the value is a null pointer; nothing is done");
}

TEST_F(HostStoreTrouble, SetOfAnEmptyKey)
{
    EXPECT_EQ(set("", "value"), -1);
    expect_said("tarnNvramConfig_set: the key is empty; nothing is done; name one");
}

TEST_F(HostStoreTrouble, SetOfAKeyThatIsTooLong)
{
    EXPECT_EQ(set(std::string(host_store_key_limit + 1, 'k'), "value"), -1);
    EXPECT_TRUE(all().empty());
    expect_said("tarnNvramConfig_set: the key has more than 255 bytes; nothing is done; "
                "shorten it");
}

TEST_F(HostStoreTrouble, SetOfAValueThatIsTooLong)
{
    set("key", "old");
    EXPECT_EQ(set("key", std::string(host_store_value_limit + 1, 'v')), -1);
    EXPECT_EQ(get("key"), "old");
    expect_said("tarnNvramConfig_set: the value has more than 8191 bytes; nothing is done; "
                "shorten it");
}

TEST_F(HostStoreTrouble, MatchOfANullKey)
{
    EXPECT_EQ(tarnNvramConfig_match(nullptr, ""), 0);
    expect_said("tarnNvramConfig_match: the key is a null pointer; nothing is done");
}

TEST_F(HostStoreTrouble, MatchOfANullText)
{
    EXPECT_EQ(tarnNvramConfig_match("never_set", nullptr), 0);
    expect_said("tarnNvramConfig_match: the text is a null pointer; nothing is done");
}

TEST_F(HostStoreTrouble, ADirectoryBelowAFile)
{
    write(top() / "file", "");
    choose(top() / "file" / "store");
    expect_unusable(store().string() + ": Not a directory" + choose_another);
}

TEST_F(HostStoreTrouble, ADirectoryThatIsAFile)
{
    write(top() / "file", "");
    choose(top() / "file");
    expect_unusable(store().string() + ": Not a directory" + choose_another);
}

TEST_F(HostStoreTrouble, ADirectoryWithoutItsParents)
{
    choose(top() / "missing" / "store");
    expect_unusable(store().string() + ": No such file or directory" + choose_another);
}

TEST_F(HostStoreTrouble, ADirectoryOfSomebodyElse)
{
    choose("/usr");
    struct stat found = {};
    ASSERT_EQ(stat("/usr", &found), 0);
    if (found.st_uid == geteuid()) {
        fs::create_directory(top() / "theirs");
        choose(top() / "theirs");
        found.st_uid = 12345;
        if (chown(store().c_str(), found.st_uid, 12345) != 0)
            GTEST_SKIP() << "there is only one user here";
    }
    expect_unusable(store().string() + ": belongs to user " + std::to_string(found.st_uid) +
                    ", not to you; set CMIF_STORE to a directory of your own");
}

TEST_F(HostStoreTrouble, TroubleThatIsMendedIsOver)
{
    choose(top() / "missing" / "store");
    EXPECT_EQ(set("key", "value"), -1);
    fs::create_directory(top() / "missing");
    EXPECT_EQ(set("key", "value"), 0);
    EXPECT_EQ(get("key"), "value");
}

TEST_F(HostStoreTrouble, DamagedLinesOfTheSavedFileAreLeftOut)
{
    const std::string damaged =
        "good=1\nno equals\n=value\nbad=\\q\nbad=\\x0\nbad=\\x00\nbad=\\\n" +
        std::string(host_store_key_limit + 1, 'k') +
        "=1\nlong=" + std::string(host_store_value_limit + 1, 'v') + "\nalso_good=2\n";
    write(saved(), damaged);
    const std::map<std::string, std::string> expected{{"good", "1"}, {"also_good", "2"}};
    EXPECT_EQ(all(), expected);
    expect_said(saved().string() +
                ": line 2: no = in it (and 7 more such lines): this is left out; correct it and "
                "start the router anew; a save replaces the file and keeps this one");
    EXPECT_EQ(read(saved()), damaged);
}

TEST_F(HostStoreTrouble, ASaveKeepsADamagedFile)
{
    write(saved(), "good=1\ndamaged one\n");
    set("new", "2");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(read(saved().string() + ".damaged-1"), "good=1\ndamaged one\n");
    expect_said_part(saved().string() + ": could not be read in full; it is kept as " +
                     saved().string() + ".damaged-1\n");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_FALSE(fs::exists(saved().string() + ".damaged-2"));
    write(saved(), "damaged two\n");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(read(saved().string() + ".damaged-1"), "good=1\ndamaged one\n");
    EXPECT_EQ(read(saved().string() + ".damaged-2"), "damaged two\n");
    host_store_power_cycle();
    const std::map<std::string, std::string> expected{{"good", "1"}, {"new", "2"}};
    EXPECT_EQ(all(), expected);
}

TEST_F(HostStoreTrouble, ASavedFileThatIsAPipe)
{
    fs::create_directory(store());
    ASSERT_EQ(mkfifo(saved().c_str(), 0600), 0);
    EXPECT_EQ(get("key"), "");
    expect_said_part("saved.conf: not a file that a save has written: this is left out;");
}

TEST_F(HostStoreTrouble, ASavedFileThatIsADirectory)
{
    fs::create_directories(saved());
    EXPECT_EQ(set("key", "value"), 0);
    EXPECT_EQ(get("key"), "value");
    EXPECT_EQ(tarnNvramConfig_save(), -1);
    EXPECT_TRUE(fs::is_directory(saved()));
    expect_said_part("saved.conf: not saved: ");
}

// How the database is damaged, and what is said of it.
struct Damage {
    friend void PrintTo(const Damage &damage, std::ostream *out) { *out << damage.name; }

    const char *name;
    void (*inflict)(const fs::path &file);
    const char *said;
};

class HostStoreDamage : public HostStoreTrouble, public testing::WithParamInterface<Damage>
{
};

TEST_P(HostStoreDamage, IsToldWithWhatToDo)
{
    Child([] {
        for (int i = 0; i < 100; ++i)
            set("key" + std::to_string(i), std::string(100, 'v'));
        tarnNvramConfig_save();
    }).wait();
    const fs::path file = database();
    GetParam().inflict(file);
    EXPECT_EQ(get("key0"), "");
    EXPECT_EQ(set("key0", "value"), -1);
    expect_said(file.string() + ": " + GetParam().said +
                "; end the programs that use the store and delete " + file.string() +
                "*; what was saved stays");
    fs::remove(file);
    fs::remove(file.string() + "-lock");
    EXPECT_EQ(Child([] { _exit(get("key0") == std::string(100, 'v') ? 0 : 1); }).wait(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    OfEachKind, HostStoreDamage,
    testing::Values(Damage{"NotADatabase",
                           [](const fs::path &file) {
                               std::ofstream(file) << std::string(9000, 'x');
                           },
                           "MDB_INVALID: File is not an LMDB file"},
                    Damage{"CutShort", [](const fs::path &file) { fs::resize_file(file, 8192); },
                           "MDB_CORRUPTED: Located page was wrong type"}),
    [](const testing::TestParamInfo<Damage> &damage) { return damage.param.name; });

TEST_F(HostStoreTrouble, ADatabaseThatIsNotFinishedIsStartedOver)
{
    Child([] { _exit(set("key", "saved") == 0 ? tarnNvramConfig_save() : 1); }).wait();
    for (const unsigned size : {0U, 100U, 4096U}) {
        fs::resize_file(database(), size);
        EXPECT_EQ(Child([] { _exit(get("key") == "saved" ? 0 : 1); }).wait(), 0) << size;
    }
    expect_silence();
}

TEST_F(HostStoreTrouble, ADiskThatIsFull)
{
    fs::create_directory(store());
    if (mount("none", store().c_str(), "tmpfs", 0, "size=100k") != 0)
        GTEST_SKIP() << "no file system can be mounted here";
    const std::string value(1000, 'v');
    int count = 0;
    while (count < 200 && set("key" + std::to_string(count), value) == 0)
        ++count;
    EXPECT_GT(count, 0);
    EXPECT_LT(count, 200);
    EXPECT_EQ(get("key0"), value);
    EXPECT_EQ(tarnNvramConfig_save(), -1);
    EXPECT_FALSE(fs::exists(saved()));
    expect_said_part("; make room or set CMIF_STORE to a directory that you can write\n");
    expect_said_part("saved.conf: not saved: No space left on device; make room");
    ASSERT_EQ(mount("none", store().c_str(), nullptr, MS_REMOUNT, "size=10m"), 0);
    EXPECT_EQ(set("another", value), 0);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(umount2(store().c_str(), MNT_DETACH), 0);
}

TEST_F(HostStoreTrouble, AFullStore)
{
    const std::string large(host_store_value_limit, 'v');
    int count = 0;
    while (count < 100000 && set("key" + std::to_string(count), large) == 0)
        ++count;
    EXPECT_GT(count, 1300);
    EXPECT_EQ(set("another", large), -1);
    expect_said(database().string() + ": the store is full; unset some keys, or start the router "
                                      "anew");
    EXPECT_EQ(get("key0"), large);
    EXPECT_EQ(set("key0", ""), 0);
    EXPECT_EQ(set("another", large), 0);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_EQ(get("another"), large);
    EXPECT_EQ(static_cast<int>(all().size()), count);
    fs::remove(saved());
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_TRUE(all().empty());
}

} // namespace
