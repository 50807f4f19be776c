// The debug log: its switch, what reaches the file and when, and its lock.
#include "cmif/cmif.h"
#include "tests/support/debug_log_file.h"
#include "tests/support/files.h"
#include "tests/support/record.h"

#include <cerrno>
#include <dlfcn.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <semaphore.h>
#include <unistd.h>

namespace
{
struct SemaphoreUse {
    int inits = 0, waits = 0, posts = 0, destroys = 0;
    int shared = -1;
    unsigned value = 0;
    int wait_failures = 0; // to come, each with EINTR
    bool init_fails = false;
} used;

template <class Function>
Function *next(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}
} // namespace

int sem_init(sem_t *semaphore, int shared, unsigned value) noexcept
{
    ++used.inits;
    used.shared = shared;
    used.value = value;
    return used.init_fails
               ? -1
               : next<int(sem_t *, int, unsigned)>("sem_init")(semaphore, shared, value);
}

int sem_wait(sem_t *semaphore)
{
    ++used.waits;
    if (used.wait_failures > 0) {
        --used.wait_failures;
        errno = EINTR;
        return -1;
    }
    return next<int(sem_t *)>("sem_wait")(semaphore);
}

int sem_post(sem_t *semaphore) noexcept
{
    ++used.posts;
    return next<int(sem_t *)>("sem_post")(semaphore);
}

int sem_destroy(sem_t *semaphore) noexcept
{
    ++used.destroys;
    return next<int(sem_t *)>("sem_destroy")(semaphore);
}

namespace
{
std::string file()
{
    return read_file(debug_log_path);
}

void write(const std::string &message)
{
    shared_debug_lte_write_log_file("%s", message.c_str());
}

// A message of this length, told apart by its letter.
std::string message(size_t length, char letter)
{
    return std::string(length, letter);
}

Recorded init(const std::string &enable)
{
    store::set("debug_lte_enable", enable);
    return record(shared_debug_lte_mutex_init);
}

TEST(DebugLog, InitTellsItsSwitchAndTheSemaphoresAddress)
{
    const std::pair<std::string, std::string> rows[] = {{"", "0"},    {"0", "0"},  {"off", "0"},
                                                        {" 0", "0"},  {"1", "1"},  {"2", "2"},
                                                        {"-1", "-1"}, {" 7x", "7"}};
    for (const auto &[stored, shown] : rows) {
        const Recorded run = init(stored);
        const std::string start =
            "[debug_lte] shared_debug_lte_mutex_init g_debug_lte_enable=" + shown +
            " g_mutex_write_log=0x0x";
        ASSERT_EQ(run.output.substr(0, start.size()), start);
        const std::string address = run.output.substr(start.size());
        ASSERT_GT(address.size(), 1U) << run.output;
        EXPECT_EQ(address.find_first_not_of("0123456789abcdef"), address.size() - 1) << run.output;
        EXPECT_EQ(address.back(), '\n') << run.output;
        ASSERT_EQ(run.steps.size(), 2U);
        EXPECT_EQ(run.steps[0], "get debug_lte_enable");
        EXPECT_EQ(shown == "0" ? 0 : run.result, 0);
        shared_debug_lte_mutex_deinit();
    }
}

TEST(DebugLog, DeinitTellsTheSameAddress)
{
    const std::string started = init("1").output;
    const Recorded run = record(shared_debug_lte_mutex_deinit);
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(run.output, "[debug_lte] shared_debug_lte_mutex_deinit " +
                              started.substr(started.find("g_mutex_write_log")));
    EXPECT_EQ(run.steps.size(), 1U);
}

TEST(DebugLog, TheSemaphoreIsOfThisProcessAndFree)
{
    init("1");
    EXPECT_EQ(used.inits, 1);
    EXPECT_EQ(used.shared, 0);
    EXPECT_EQ(used.value, 1U);
    write("one");
    write(message(200, 'd'));
    EXPECT_EQ(used.waits, 2);
    EXPECT_EQ(used.posts, 2);
    shared_debug_lte_mutex_deinit();
    EXPECT_EQ(used.destroys, 1);
}

TEST(DebugLog, InitReturnsTheSemaphoresResult)
{
    used.init_fails = true;
    EXPECT_EQ(init("1").result, -1);
}

TEST(DebugLog, AnInterruptedWaitIsNoLock)
{
    init("1");
    used.wait_failures = 2;
    write("one");
    EXPECT_EQ(used.waits, 3);
    EXPECT_EQ(used.posts, 1);
}

TEST(DebugLog, OffDoesNothingAtAll)
{
    for (const char *value : {"", "0", "off"}) {
        init(value);
        EXPECT_EQ(record([] { return shared_debug_lte_write_log_file("%s", "text"); }).steps,
                  Lines{});
        for (int i = 0; i < 10; ++i)
            write(message(100, 'a'));
        EXPECT_EQ(record(shared_debug_lte_mutex_deinit).steps, Lines{});
    }
    EXPECT_FALSE(file_exists(debug_log_path));
    EXPECT_EQ(used.inits + used.waits + used.posts + used.destroys, 0);
}

TEST(DebugLog, OffBeforeAnyInit)
{
    write(message(200, 'a'));
    EXPECT_FALSE(file_exists(debug_log_path));
    EXPECT_EQ(used.waits, 0);
}

TEST(DebugLog, TheSwitchIsReadAtInitOnly)
{
    init("1");
    store::set("debug_lte_enable", "0");
    write(message(200, 'a'));
    EXPECT_EQ(file(), message(200, 'a'));
    EXPECT_EQ(store::reads("debug_lte_enable"), 1);
}

TEST(DebugLog, AHundredAndThirty)
{
    init("1");
    write(message(100, 'a'));
    EXPECT_FALSE(file_exists(debug_log_path));
    write(message(30, 'b'));
    EXPECT_EQ(file(), message(100, 'a'));
    write(message(98, 'c'));
    EXPECT_EQ(file(), message(100, 'a') + message(30, 'b'));
}

// What two messages leave in the file.
struct Fit {
    size_t first, second;
    size_t in_file;
};

TEST(DebugLog, BlocksEndWhereTheNextMessageDoesNotFit)
{
    const Fit fits[] = {{97, 30, 0},   {98, 30, 98},   {127, 0, 0},     {126, 1, 0},
                        {127, 1, 127}, {1, 126, 0},    {1, 127, 1},     {0, 127, 0},
                        {0, 128, 0},   {1, 128, 1},    {127, 128, 127}, {128, 0, 128},
                        {128, 1, 128}, {128, 128, 128}};
    for (const Fit &fit : fits) {
        init("1");
        (void)DebugLogFile::text(); // what the last row left
        write(message(200, '-'));
        std::filesystem::remove(debug_log_path);
        write(message(fit.first, 'a'));
        write(message(fit.second, 'b'));
        EXPECT_EQ(file(), message(fit.in_file, 'a')) << fit.first << " and " << fit.second;
        EXPECT_EQ(DebugLogFile::text(), message(fit.first, 'a') + message(fit.second, 'b'));
        std::filesystem::remove(debug_log_path);
    }
}

TEST(DebugLog, AMessageThatCannotFitGoesBehindWhatIsPending)
{
    init("1");
    std::string all;
    for (const size_t length : {129U, 130U, 200U, 254U, 255U}) {
        write("pending");
        write(message(length, 'd'));
        all += "pending" + message(length, 'd');
        EXPECT_EQ(file(), all) << length;
    }
}

TEST(DebugLog, MessagesAreCutAt255Characters)
{
    init("1");
    write(message(255, 'a') + "b");
    EXPECT_EQ(file(), message(255, 'a'));
    write(message(300, 'c'));
    EXPECT_EQ(file(), message(255, 'a') + message(255, 'c'));
    shared_debug_lte_write_log_file("%0300d", 7);
    EXPECT_EQ(file(), message(255, 'a') + message(255, 'c') + message(255, '0'));
}

TEST(DebugLog, FormatsAndAddsNothing)
{
    const DebugLogFile log;
    shared_debug_lte_write_log_file("[%s] %d %% %5.1f|", "a%sb", -3, 2.5);
    write("%d%n");
    write("\n\n");
    write("");
    EXPECT_EQ(DebugLogFile::text(), "[a%sb] -3 %   2.5|%d%n\n\n");
}

TEST(DebugLog, SeveralBlocksKeepTheirOrder)
{
    const DebugLogFile log;
    std::string all;
    for (int i = 0; i < 150; ++i) {
        const std::string line =
            std::to_string(i) + message(static_cast<size_t>(i) % 140, '.') + "\n";
        write(line);
        all += line;
        const std::string written = file();
        EXPECT_EQ(written, all.substr(0, written.size()));
        EXPECT_LE(all.size() - written.size(), 128U);
    }
    EXPECT_EQ(DebugLogFile::text(), all);
}

TEST(DebugLog, TheFileIsAppendedTo)
{
    write_file(debug_log_path, "older\n");
    init("1");
    write(message(200, 'a'));
    EXPECT_EQ(file(), "older\n" + message(200, 'a'));
}

TEST(DebugLog, TheFileIsOpenedForEachBlockAndClosed)
{
    init("1");
    const long before = open_descriptors();
    write(message(200, 'a'));
    EXPECT_EQ(open_descriptors(), before);
    std::filesystem::rename(debug_log_path, "/data/elsewhere");
    write(message(200, 'b'));
    EXPECT_EQ(open_descriptors(), before);
    EXPECT_EQ(file(), message(200, 'b'));
    EXPECT_EQ(read_file("/data/elsewhere"), message(200, 'a'));
}

TEST(DebugLog, AnUnopenedFileLosesItsBlockAlone)
{
    init("1");
    std::filesystem::create_directory(debug_log_path); // can't be opened for writing
    write(message(100, 'a'));
    const Recorded run = record([] {
        write(message(100, 'b')); // loses a
        write(message(200, 'c')); // loses b and itself
        write(message(100, 'd'));
        return 0;
    });
    EXPECT_EQ(run.steps, Lines{});
    std::filesystem::remove(debug_log_path);
    EXPECT_EQ(DebugLogFile::text(), message(100, 'd'));
    EXPECT_EQ(used.waits, used.posts);
}

TEST(DebugLog, DeinitDoesNotFlush)
{
    init("1");
    write(message(127, 'a'));
    shared_debug_lte_mutex_deinit();
    EXPECT_FALSE(file_exists(debug_log_path));
}

TEST(DebugLog, WhatDeinitLeftIsStillPendingForTheNextInit)
{
    init("1");
    write(message(50, 'a'));
    shared_debug_lte_mutex_deinit();
    init("1");
    write(message(100, 'b'));
    EXPECT_EQ(file(), message(50, 'a'));
}
} // namespace
