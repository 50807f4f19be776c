// The development store used by many processes and threads at once, some of which are killed.
#include "in_child.h"
#include "tests/support/redirect.h"
#include "tests/support/store_directory.h"

#include <atomic>
#include <csignal>
#include <lmdb.h>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

namespace
{

namespace fs = std::filesystem;

constexpr int killed = 128 + SIGKILL;

// Kills `body` after up to two milliseconds, a different time in each round.
void kill_during(int round, const std::function<void()> &body)
{
    Child child(body);
    std::this_thread::sleep_for(std::chrono::microseconds(round * 7919 % 2000));
    child.signal(SIGKILL);
    EXPECT_EQ(child.wait(), killed);
}

// Kills a child that has opened the database itself and is in a transaction.
void kill_in_transaction(const fs::path &file, unsigned flags)
{
    Redirect ready(STDERR_FILENO);
    Child child([&] {
        MDB_env *lmdb = nullptr;
        MDB_txn *transaction = nullptr;
        require(mdb_env_create(&lmdb) == 0);
        require(mdb_env_open(lmdb, file.c_str(), MDB_NOSUBDIR | MDB_NOSYNC, 0600) == 0);
        require(mdb_txn_begin(lmdb, nullptr, flags, &transaction) == 0);
        require(write(STDERR_FILENO, "x", 1) == 1);
        pause();
    });
    while (ready.bytes().empty())
        ASSERT_TRUE(child.still_runs());
    child.signal(SIGKILL);
    EXPECT_EQ(child.wait(), killed);
}

class HostStoreConcurrent : public HostStore
{
};

TEST_F(HostStoreConcurrent, EachThreadHasItsOwnAnswer)
{
    std::atomic<int> wrong{0};
    const auto work = [&wrong](const std::string &key) {
        for (int i = 0; i < 2000; ++i) {
            const std::string value = key + std::to_string(i);
            if (set(key, value) != 0 || get(key) != value ||
                tarnNvramConfig_match(key.c_str(), value.c_str()) == 0)
                ++wrong;
        }
    };
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (int number = 0; number < 8; ++number)
        threads.emplace_back(work, "thread" + std::to_string(number));
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(tarnNvramConfig_save(), 0);
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(all().size(), 8U);
}

TEST_F(HostStoreConcurrent, ThreadsThatHaveEndedLeaveRoomForMore)
{
    set("key", "value");
    for (int i = 0; i < 1000; ++i)
        std::thread([] { EXPECT_EQ(get("key"), "value"); }).join();
}

TEST_F(HostStoreConcurrent, ManyProcessesCreateItAtOnce)
{
    for (int round = 0; round < 10; ++round) {
        choose(top() / std::to_string(round));
        std::vector<std::unique_ptr<Child>> children;
        children.reserve(8);
        for (int number = 0; number < 8; ++number)
            children.push_back(std::make_unique<Child>(
                [number] { require(set(std::to_string(number), "1") == 0); }));
        for (const auto &child : children)
            EXPECT_EQ(child->wait(), 0);
        EXPECT_EQ(Child([] { require(all().size() == 8); }).wait(), 0);
    }
}

TEST_F(HostStoreConcurrent, ConcurrentSavesAllSucceed)
{
    for (int i = 0; i < 5; ++i)
        set("key" + std::to_string(i), std::string(host_store_value_limit, 'v'));
    const auto save = [] {
        for (int i = 0; i < 60; ++i)
            require(tarnNvramConfig_save() == 0);
    };
    Child first(save), second(save), third(save);
    EXPECT_EQ(first.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
    EXPECT_EQ(third.wait(), 0);
}

// LMDB's list of the processes that read the database.
std::string readers(const fs::path &file)
{
    MDB_env *lmdb = nullptr;
    std::string list;
    require(mdb_env_create(&lmdb) == 0);
    require(mdb_env_open(lmdb, file.c_str(), MDB_NOSUBDIR | MDB_NOSYNC, 0600) == 0);
    const auto append = [](const char *line, void *all) {
        *static_cast<std::string *>(all) += line;
        return 0;
    };
    require(mdb_reader_list(lmdb, append, &list) >= 0);
    return list;
}

TEST_F(HostStoreConcurrent, AForkedChildIsASeparateReader)
{
    set("key", "value");
    ASSERT_EQ(get("key"), "value");
    Child child([] {
        require(get("key") == "value" && set("ready", "1") == 0);
        pause();
    });
    while (get("ready").empty()) {}
    const auto check_readers = [this, &child] {
        const std::string list = readers(database());
        require(list.find(std::to_string(child.process()) + " ") != std::string::npos);
        require(list.find(std::to_string(getppid()) + " ") != std::string::npos);
    };
    EXPECT_EQ(Child(check_readers).wait(), 0);
}

TEST_F(HostStoreConcurrent, AProcessKilledWhileItCreatesTheStoreBlocksNoOther)
{
    for (int round = 0; round < 60; ++round) {
        choose(top() / std::to_string(round));
        write(saved(), "saved=1\n");
        Child other([] { require(get("saved") == "1"); });
        kill_during(round, [] {
            set("key", "value");
            pause();
        });
        EXPECT_EQ(other.wait(), 0);
        EXPECT_EQ(Child([] {
                      require(get("saved") == "1" && set("key", "2") == 0 && get("key") == "2");
                      require(tarnNvramConfig_save() == 0);
                  }).wait(),
                  0);
    }
}

TEST_F(HostStoreConcurrent, AWriterKilledAtAnyMomentLeavesItSound)
{
    set("steady", "1");
    for (int round = 0; round < 100; ++round) {
        kill_during(round, [] {
            for (char c = 'a';; c = c == 'z' ? 'a' : static_cast<char>(c + 1))
                set("child", std::string(3000, c));
        });
        ASSERT_EQ(set("parent", std::to_string(round)), 0);
        ASSERT_EQ(get("parent"), std::to_string(round));
        ASSERT_EQ(get("steady"), "1");
        const std::string child = get("child");
        ASSERT_TRUE(child.empty() || child == std::string(3000, child[0]));
    }
}

TEST_F(HostStoreConcurrent, AReaderKilledAtAnyMomentLeavesItSound)
{
    set("key", "value");
    for (int round = 0; round < 100; ++round) {
        kill_during(round, [] {
            for (;;)
                require(get("key") == "value");
        });
        ASSERT_EQ(set("parent", std::to_string(round)), 0);
        ASSERT_EQ(get("key"), "value");
    }
}

TEST_F(HostStoreConcurrent, AWriterKilledInItsTransactionBlocksNoOther)
{
    set("key", "old");
    kill_in_transaction(database(), 0);
    EXPECT_EQ(get("key"), "old");
    EXPECT_EQ(set("key", "new"), 0);
    EXPECT_EQ(get("key"), "new");
}

TEST_F(HostStoreConcurrent, AReaderKilledInItsTransactionKeepsNoPages)
{
    set("key", "old");
    kill_in_transaction(database(), MDB_RDONLY);
    const std::string large(host_store_value_limit, 'v');
    for (int i = 0; i < 20000; ++i) // more than twice what the database holds
        ASSERT_EQ(set("large" + std::to_string(i % 10), large), 0) << i;
    EXPECT_EQ(get("key"), "old");
}

TEST_F(HostStoreConcurrent, ReadersThatHaveEndedLeaveRoomForMore)
{
    set("key", "value");
    for (int i = 0; i < 600; ++i)
        ASSERT_EQ(Child([] { require(get("key") == "value"); }).wait(), 0) << i;
}

TEST_F(HostStoreConcurrent, ASaveKilledAtAnyMomentLeavesTheOldFileOrTheNew)
{
    const std::string value(host_store_value_limit, 'v');
    for (int i = 0; i < 5; ++i)
        set("key" + std::to_string(i), value);
    ASSERT_EQ(tarnNvramConfig_save(), 0);
    const std::string expected = read(saved());
    for (int round = 0; round < 20; ++round) {
        Child saver([] {
            while (tarnNvramConfig_save() == 0) {}
        });
        auto last = fs::last_write_time(saved());
        for (int changes = 0; changes < round;) {
            ASSERT_EQ(read(saved()), expected) << round;
            const auto now = fs::last_write_time(saved());
            changes += now != std::exchange(last, now) ? 1 : 0;
        }
        saver.signal(SIGKILL);
        ASSERT_EQ(saver.wait(), killed);
        ASSERT_EQ(read(saved()), expected) << round;
    }
    ASSERT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_FALSE(fs::exists(saved().string() + ".new"));
}

TEST_F(HostStoreConcurrent, APowerCycleKilledAtAnyMomentIsCompleteOrNotDone)
{
    for (int i = 0; i < 50; ++i)
        set("key" + std::to_string(i), "saved");
    tarnNvramConfig_save();
    for (int round = 0; round < 60; ++round) {
        set("unsaved", "1");
        kill_during(round, [] {
            for (;;)
                host_store_power_cycle();
        });
        ASSERT_EQ(all().size(), get("unsaved").empty() ? 50U : 51U);
    }
}

} // namespace
