// The database file: full, held by readers, of earlier runs of the host, and its limits.
#include "filled_store.h"

#include <barrier>
#include <csignal>
#include <lmdb.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <vector>

namespace
{

namespace fs = std::filesystem;

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

// Processes that have stopped in a read hold all that later changes have replaced.
TEST_F(HostStoreDatabase, WithoutRoomForChangesNamesTheProcessesThatHoldIt)
{
    fill();
    const fs::path file = database();
    const auto stop_in_a_read = [&file] {
        MDB_env *lmdb = nullptr;
        MDB_txn *transaction = nullptr;
        require(mdb_env_create(&lmdb) == 0);
        require(mdb_env_open(lmdb, file.c_str(), MDB_NOSUBDIR | MDB_NOSYNC, 0600) == 0);
        require(mdb_txn_begin(lmdb, nullptr, MDB_RDONLY, &transaction) == 0);
        require(::write(STDOUT_FILENO, "x", 1) == 1); // not by a set: LMDB opens a file once
        pause();
    };
    Child first(stop_in_a_read), second(stop_in_a_read);
    for (const Child *reader : {&first, &second}) {
        while (reader->output().empty())
            ASSERT_TRUE(reader->still_runs());
    }
    const std::string large(host_store_value_limit, 'v');
    int count = 0;
    while (count < 20000 && set("large", large) == 0)
        ++count;
    EXPECT_GT(count, 1000);
    EXPECT_LT(count, 20000);
    const auto [low, high] = std::minmax({first.process(), second.process()});
    const std::string processes = std::to_string(low) + " " + std::to_string(high);
    expect_error(file.string() +
                 ": no room is left for changes while these processes read and do not go on: " +
                 processes + "; continue them (kill -CONT " + processes + ") or end them");
    for (Child *reader : {&first, &second}) {
        reader->signal(SIGKILL);
        reader->wait();
    }
    EXPECT_EQ(set("large", "small"), 0);
    EXPECT_EQ(get("key0"), std::string(100, 'v'));
}

// As in two containers that share the store: each has a process 1.
TEST_F(HostStoreDatabase, IsNotReadByTwoProcessesOfOneNumber)
{
    fill();
    const auto first_of_a_namespace = [] {
        return static_cast<pid_t>(
            syscall(SYS_clone, CLONE_NEWPID | SIGCHLD, nullptr, nullptr, nullptr, nullptr));
    };
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t reader = first_of_a_namespace();
    if (reader == -1)
        GTEST_SKIP() << "no namespaces on this system";
    if (reader == 0) {
        require(has_all() && ::write(ready[1], "x", 1) == 1);
        pause();
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    const pid_t other = first_of_a_namespace();
    if (other == 0) {
        require(get("key0").empty());
        _exit(0);
    }
    int status = 0;
    EXPECT_EQ(waitpid(other, &status, 0), other);
    EXPECT_EQ(status, 0);
    expect_error(database().string() +
                 ": a process of another PID namespace that reads the store has the number of "
                 "this one, 1; start the program again, or give each container a CMIF_STORE of "
                 "its own");
    kill(reader, SIGKILL);
    waitpid(reader, nullptr, 0);
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
