// The debug log: its switch and its lock.
#include "cmif/cmif.h"
#include "tests/support/debug_log_file.h"
#include "tests/support/files.h"
#include "tests/support/record.h"

#include <cerrno>
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
    int wait_failures = 0; // to come
    int wait_error = EINTR;
    bool init_fails = false;
} used;

} // namespace

int sem_init(sem_t *semaphore, int shared, unsigned value) noexcept
{
    ++used.inits;
    used.shared = shared;
    used.value = value;
    return used.init_fails
               ? -1
               : calls::replaced<int(sem_t *, int, unsigned)>("sem_init")(semaphore, shared, value);
}

int sem_wait(sem_t *semaphore)
{
    ++used.waits;
    if (used.wait_failures > 0) {
        --used.wait_failures;
        errno = used.wait_error;
        return -1;
    }
    return calls::replaced<int(sem_t *)>("sem_wait")(semaphore);
}

int sem_post(sem_t *semaphore) noexcept
{
    ++used.posts;
    return calls::replaced<int(sem_t *)>("sem_post")(semaphore);
}

int sem_destroy(sem_t *semaphore) noexcept
{
    ++used.destroys;
    return calls::replaced<int(sem_t *)>("sem_destroy")(semaphore);
}

namespace
{
TEST(DebugLog, InitPrintsItsSwitchAndTheSemaphoresAddress)
{
    const std::pair<std::string, std::string> rows[] = {{"", "0"},    {"0", "0"},  {"off", "0"},
                                                        {" 0", "0"},  {"1", "1"},  {"2", "2"},
                                                        {"-1", "-1"}, {" 7x", "7"}};
    for (const auto &[stored, shown] : rows) {
        const Recorded run = init_log(stored);
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
        EXPECT_EQ(run.result, 0);
        shared_debug_lte_mutex_deinit();
    }
}

TEST(DebugLog, DeinitPrintsTheSameAddress)
{
    const std::string started = init_log("1").output;
    const Recorded run = record(shared_debug_lte_mutex_deinit);
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(run.output, "[debug_lte] shared_debug_lte_mutex_deinit " +
                              started.substr(started.find("g_mutex_write_log")));
    EXPECT_EQ(run.steps.size(), 1U);
}

TEST(DebugLog, TheSemaphoreIsProcessPrivateAndFree)
{
    init_log("1");
    EXPECT_EQ(used.inits, 1);
    EXPECT_EQ(used.shared, 0);
    EXPECT_EQ(used.value, 1U);
    write_log("one");
    write_log(std::string(200, 'd'));
    EXPECT_EQ(used.waits, 2);
    EXPECT_EQ(used.posts, 2);
    shared_debug_lte_mutex_deinit();
    EXPECT_EQ(used.destroys, 1);
}

TEST(DebugLog, InitReturnsTheSemaphoresResult)
{
    used.init_fails = true;
    EXPECT_EQ(init_log("1").result, -1);
}

TEST(DebugLog, AnInterruptedWaitIsTriedAgain)
{
    init_log("1");
    used.wait_failures = 2;
    write_log("one");
    EXPECT_EQ(used.waits, 3);
    EXPECT_EQ(used.posts, 1);
}

// Trying again would hang the caller: such a failure does not go away.
TEST(DebugLog, AWaitThatFailsForAnotherReasonIsNotTriedAgain)
{
    init_log("1");
    used.wait_failures = 2;
    used.wait_error = EINVAL;
    write_log("one");
    EXPECT_EQ(used.waits, 1);
}

void expect_nothing_done(const std::function<int()> &call)
{
    const Recorded run = record(call);
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(run.steps, Lines{});
}

TEST(DebugLog, DoesNothingWhenItIsOff)
{
    for (const char *value : {"", "0", "off"}) {
        init_log(value);
        expect_nothing_done([] { return shared_debug_lte_write_log_file("%s", "text"); });
        for (int i = 0; i < 10; ++i)
            write_log(std::string(100, 'a'));
        expect_nothing_done(shared_debug_lte_mutex_deinit);
    }
    EXPECT_FALSE(file_exists(debug_log_path));
    EXPECT_EQ(used.inits + used.waits + used.posts + used.destroys, 0);
}

TEST(DebugLog, IsOffBeforeInit)
{
    write_log(std::string(200, 'a'));
    EXPECT_FALSE(file_exists(debug_log_path));
    EXPECT_EQ(used.waits, 0);
}

TEST(DebugLog, TheSwitchIsReadOnlyAtInit)
{
    init_log("1");
    store::set("debug_lte_enable", "0");
    write_log(std::string(200, 'a'));
    EXPECT_EQ(read_file(debug_log_path), std::string(200, 'a'));
    EXPECT_EQ(store::reads("debug_lte_enable"), 1);
}

// What two messages leave in the file.
TEST(DebugLog, AFileThatCannotBeOpenedLosesOnlyItsBlock)
{
    init_log("1");
    std::filesystem::create_directory(debug_log_path); // can't be opened for writing
    write_log(std::string(100, 'a'));
    const Recorded run = record([] {
        write_log(std::string(100, 'b')); // loses a
        write_log(std::string(200, 'c')); // loses b and itself
        write_log(std::string(100, 'd'));
        return 0;
    });
    EXPECT_EQ(run.steps, Lines{});
    std::filesystem::remove(debug_log_path);
    EXPECT_EQ(DebugLogFile::text(), std::string(100, 'd'));
    EXPECT_EQ(used.waits, used.posts);
}
} // namespace
