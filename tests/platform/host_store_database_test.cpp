// The database file: damaged, cut short, full, of earlier runs of the host, and its limits.
#include "in_child.h"
#include "store_errors.h"

#include <barrier>
#include <lmdb.h>
#include <sys/mount.h>
#include <thread>
#include <vector>

namespace
{

namespace fs = std::filesystem;

class HostStoreDatabase : public HostStoreErrors
{
protected:
    // 100 saved keys, so that the database has some pages.
    static void fill()
    {
        ASSERT_EQ(in_child([] {
                      for (int i = 0; i < 100; ++i)
                          require(set("key" + std::to_string(i), std::string(100, 'v')) == 0);
                      require(tarnNvramConfig_save() == 0);
                  }),
                  0);
    }
    static bool has_all()
    {
        bool all = true;
        for (int i = 0; i < 100; ++i)
            all = all && get("key" + std::to_string(i)) == std::string(100, 'v');
        return all;
    }
    void remove_database() const
    {
        fs::remove(database().string() + "-lock");
        fs::remove(database());
    }
};

struct Damage {
    friend void PrintTo(const Damage &damage, std::ostream *out) { *out << damage.name; }
    const char *name;
    void (*inflict)(const fs::path &file);
    const char *error;
};

class HostStoreDamage : public HostStoreDatabase, public testing::WithParamInterface<Damage>
{
};

TEST_P(HostStoreDamage, IsReportedWithARemedyThatWorks)
{
    fill();
    const fs::path file = database();
    GetParam().inflict(file);
    const auto before = open_descriptors();
    EXPECT_EQ(get("key0"), "");
    EXPECT_EQ(set("key0", "value"), -1);
    EXPECT_EQ(open_descriptors(), before);
    expect_error(file.string() + ": " + GetParam().error +
                 "; end the programs that use the store and delete " + file.string() +
                 "*; the saved configuration stays");
    remove_database();
    EXPECT_EQ(in_child([] { require(has_all()); }), 0);
}

void overwrite(const fs::path &file, std::streamoff offset, const std::string &bytes)
{
    std::fstream(file, std::ios::in | std::ios::out | std::ios::binary).seekp(offset) << bytes;
}

INSTANTIATE_TEST_SUITE_P(
    OfEachKind, HostStoreDamage,
    testing::Values(Damage{"NotADatabase",
                           [](const fs::path &file) {
                               std::ofstream(file) << std::string(9000, 'x');
                           },
                           "MDB_INVALID: File is not an LMDB file"},
                    Damage{"CutShort", [](const fs::path &file) { fs::resize_file(file, 8192); },
                           "MDB_CORRUPTED: Located page was wrong type"},
                    Damage{"LastPageBeyondTheMap",
                           [](const fs::path &file) { // last page 16384, beyond 64 MiB
                               for (const std::streamoff page : {0, 4096})
                                   overwrite(file, page + 136,
                                             std::string("\0\x40\0\0\0\0\0\0", 8));
                           },
                           "MDB_CORRUPTED: Located page was wrong type"},
                    Damage{"OfAnotherVersion",
                           [](const fs::path &file) {
                               for (const std::streamoff page : {0, 4096})
                                   overwrite(file, page + 20, "\x63");
                           },
                           "MDB_VERSION_MISMATCH: Database environment version mismatch"}),
    [](const testing::TestParamInfo<Damage> &damage) { return damage.param.name; });

// Whatever the size, no process is killed, and each reads all values or reports the damage.
TEST_F(HostStoreDatabase, CutShortToAnySizeKillsNoProcess)
{
    fill();
    const std::string whole = read(database());
    const fs::path file = database();
    ASSERT_GT(whole.size(), 8192U);
    for (std::size_t size = 0; size <= whole.size(); size += 512) {
        for (const std::size_t cut : {size, size + 1, size - 1}) {
            if (cut > whole.size())
                continue;
            write(file, whole.substr(0, cut));
            const bool unfinished = cut < 8192, complete = cut == whole.size();
            const int status = in_child([] {
                const bool readable = has_all(), writable = set("key0", std::string(100, 'v')) == 0;
                require(readable && writable);
            });
            if (unfinished || complete)
                EXPECT_EQ(status, 0) << cut;
            else
                EXPECT_LE(status, 1) << cut; // an end that was unused does no harm
        }
    }
    expect_error_with(file.string() + ": MDB_");
}

TEST_F(HostStoreDatabase, UnfinishedIsSilentlyCreatedAgain)
{
    fill();
    const fs::path file = database();
    for (const unsigned size : {0U, 1U, 100U, 4095U, 4096U, 4097U, 8191U}) {
        fs::resize_file(file, size);
        EXPECT_EQ(in_child([] { require(has_all()); }), 0) << size;
    }
    expect_no_error();
}

TEST_F(HostStoreDatabase, IsNotExtendedByOpeningIt)
{
    fill();
    const auto size = fs::file_size(database());
    EXPECT_EQ(in_child([] { require(has_all()); }), 0);
    EXPECT_EQ(fs::file_size(database()), size);
}

// Another program that knows LMDB may have written it.
TEST_F(HostStoreDatabase, AValueThatIsTooLongIsCut)
{
    fill();
    std::string key = "key0", value(host_store_value_limit + 1000, 'v');
    MDB_env *lmdb = nullptr;
    MDB_txn *transaction = nullptr;
    MDB_dbi table = 0;
    MDB_val key_val{key.size(), key.data()}, value_val{value.size(), value.data()};
    ASSERT_EQ(mdb_env_create(&lmdb), 0);
    ASSERT_EQ(mdb_env_open(lmdb, database().c_str(), MDB_NOSUBDIR | MDB_NOSYNC, 0600), 0);
    ASSERT_EQ(mdb_txn_begin(lmdb, nullptr, 0, &transaction), 0);
    ASSERT_EQ(mdb_dbi_open(transaction, nullptr, 0, &table), 0);
    EXPECT_EQ(mdb_put(transaction, table, &key_val, &value_val, 0), 0);
    EXPECT_EQ(mdb_txn_commit(transaction), 0);
    mdb_env_close(lmdb);
    EXPECT_EQ(get("key0"), value.substr(0, host_store_value_limit));
}

TEST_F(HostStoreDatabase, OnAFullDiskIsReportedAndRecovers)
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
    EXPECT_FALSE(fs::exists(saved().string() + ".new"));
    const bool short_write = errors().find("Input/output error") != std::string::npos;
    expect_error_with(database().string() +
                      (short_write ? ": Input/output error" : ": No space left on device") +
                      "; make room or set CMIF_STORE to a directory that you can write\n");
    expect_error_with("saved.conf: not saved: No space left on device; make room");
    ASSERT_EQ(mount("none", store().c_str(), nullptr, MS_REMOUNT, "size=10m"), 0);
    EXPECT_EQ(set("another", value), 0);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(umount2(store().c_str(), MNT_DETACH), 0);
}

TEST_F(HostStoreDatabase, HoldsAbout16MiB)
{
    const std::string large(host_store_value_limit, 'v'); // takes three pages
    int count = 0;
    while (count < 100000 && set("key" + std::to_string(count), large) == 0)
        ++count;
    EXPECT_NEAR(count, (16 << 20) / (3 * 4096), 20); // some pages hold the keys
    EXPECT_EQ(set("another", large), -1);
    EXPECT_EQ(set("key0", large), -1);
    expect_error(database().string() + ": the store is full; unset some keys, or restart cmif-sim");
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

TEST_F(HostStoreDatabase, HasAMapOf64MiB)
{
    fill();
    MDB_env *lmdb = nullptr;
    MDB_envinfo info = {};
    ASSERT_EQ(mdb_env_create(&lmdb), 0);
    ASSERT_EQ(mdb_env_open(lmdb, database().c_str(), MDB_NOSUBDIR | MDB_NOSYNC, 0600), 0);
    EXPECT_EQ(mdb_env_info(lmdb, &info), 0);
    EXPECT_EQ(info.me_mapsize, std::size_t{64} << 20);
    mdb_env_close(lmdb);
}

TEST_F(HostStoreDatabase, IsNotLoadedInPart)
{
    set("running", "1");
    std::string text;
    for (int number = 0; number < 1500; ++number)
        text +=
            "key" + std::to_string(number) + "=" + std::string(host_store_value_limit, 'v') + "\n";
    write(saved(), text + "last=\n"); // which would fit, being unset
    EXPECT_EQ(host_store_power_cycle(), -1);
    const std::map<std::string, std::string> unchanged{{"running", "1"}};
    EXPECT_EQ(all(), unchanged);
    expect_error(database().string() + ": the store is full; unset some keys, or restart cmif-sim");
}

// A thread stays a reader until it ends: this one, and 511 more.
TEST_F(HostStoreDatabase, HasRoomFor512Readers)
{
    constexpr int others = 511;
    set("key", "value");
    EXPECT_EQ(get("key"), "value");
    std::barrier all_read(others + 1), refused(others + 1);
    std::vector<std::thread> readers;
    readers.reserve(others);
    for (int number = 0; number < others; ++number)
        readers.emplace_back([&] {
            EXPECT_EQ(get("key"), "value");
            all_read.arrive_and_wait();
            refused.arrive_and_wait();
        });
    all_read.arrive_and_wait();
    expect_no_error();
    std::thread([] { EXPECT_EQ(get("key"), ""); }).join();
    expect_error(database().string() +
                 ": MDB_READERS_FULL: Environment maxreaders limit reached; end some of the "
                 "programs that use the store");
    EXPECT_EQ(set("key", "new"), 0); // a writer needs no place among the readers
    refused.arrive_and_wait();
    for (std::thread &reader : readers)
        reader.join();
    std::thread([] { EXPECT_EQ(get("key"), "new"); }).join();
}

TEST_F(HostStoreDatabase, IsNamedAfterTheFirstPartOfTheHostsRun)
{
    fill();
    const std::string run = read("/proc/sys/kernel/random/boot_id");
    ASSERT_EQ(run.find('-'), 8U);
    EXPECT_EQ(database().filename(), "running-" + run.substr(0, 8) + ".mdb");
}

// The earlier run's files have the database's real name, but for the last digit of the run.
TEST_F(HostStoreDatabase, OfAnEarlierRunOfTheHostIsRemoved)
{
    fill();
    const std::string name = database().stem();
    std::string earlier = name;
    ASSERT_FALSE(earlier.empty());
    earlier.back() = earlier.back() == '0' ? '1' : '0';
    fs::rename(database(), store() / (earlier + ".mdb"));
    fs::rename(store() / (name + ".mdb-lock"), store() / (earlier + ".mdb-lock"));
    write(store() / "notes", "mine");
    EXPECT_TRUE(has_all());
    EXPECT_TRUE(fs::exists(store() / (name + ".mdb")));
    EXPECT_FALSE(fs::exists(store() / (earlier + ".mdb")));
    EXPECT_FALSE(fs::exists(store() / (earlier + ".mdb-lock")));
    EXPECT_TRUE(fs::exists(store() / "notes"));
    EXPECT_TRUE(fs::exists(saved()));
}

// Another process may be using any of the files then.
TEST_F(HostStoreDatabase, OfAnyRunIsKeptWhileTheRunIsNotKnown)
{
    fill();
    const fs::path earlier = database();
    const std::string empty = top() / "empty";
    write(empty, "");
    if (mount(empty.c_str(), "/proc/sys/kernel/random/boot_id", nullptr, MS_BIND, nullptr) != 0)
        GTEST_SKIP() << "no file can be mounted here";
    EXPECT_EQ(in_child([] { require(has_all()); }), 0);
    EXPECT_TRUE(fs::exists(earlier));
    EXPECT_TRUE(fs::exists(store() / "running-.mdb"));
    EXPECT_EQ(umount2("/proc/sys/kernel/random/boot_id", MNT_DETACH), 0);
}

} // namespace
