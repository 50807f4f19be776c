// The provider list's file as a whole: missing, huge, not a regular file; and what stays untouched.
#include "tests/support/files.h"
#include "tests/support/memory_store.h"
#include "tests/support/provider_list_run.h"
#include "tests/support/system_calls.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
std::string times(size_t count, const std::string &part)
{
    std::string all;
    while (count-- > 0)
        all += part;
    return all;
}
} // namespace

// 1023 bytes count; a group that lies across the end is unclosed.
TEST(ProviderListFile, IsCutAt1023Bytes)
{
    for (const size_t size : {1022U, 1023U, 1024U, 1025U, 2048U}) {
        SCOPED_TRACE(size);
        const std::string file = std::string(size - 3, '.') + "(7)";
        const std::string kept = file.substr(0, 1023);
        const ProviderListRun reading = read_provider_list(file);
        if (size <= 1023)
            expect_reading(reading, kept, {{"7", {7}}}, list_end);
        else
            expect_reading(reading, kept, {}, size < 1026 ? unclosed : no_search);
    }
}

TEST(ProviderListFile, MayBeOfOneMebibyte)
{
    const std::string file(1 << 20, ',');
    expect_reading(read_provider_list(file), file.substr(0, 1023), {}, no_search);
    const std::string open = "(" + file;
    expect_reading(read_provider_list(open), open.substr(0, 1023), {}, unclosed);
}

TEST(ProviderListFile, MayHoldTenThousandGroups)
{
    const std::string empty = times(10000, "()");
    expect_reading(read_provider_list(empty), empty.substr(0, 1023),
                   std::vector<Group>(511, {"", {}}), unclosed);
    const std::string ones = times(10000, "(1)");
    expect_reading(read_provider_list(ones), ones.substr(0, 1023),
                   std::vector<Group>(341, {"1", {1}}), list_end);
}

TEST(ProviderListFile, GivesSixWhenItIsMissing)
{
    const ProviderListRun reading = read_existing_provider_list();
    EXPECT_EQ(reading.run.result, 6);
    EXPECT_EQ(reading.run.output, "fd file open fail.\n");
    for (const cmif_provider_info &info : reading.list)
        expect_record(info, {});
    ASSERT_EQ(symlink(provider_list_path, provider_list_path), 0);
    EXPECT_EQ(read_existing_provider_list().run.result, 6);
}

// A directory can be opened, but has nothing to read.
TEST(ProviderListFile, MayBeADirectory)
{
    ASSERT_EQ(mkdir(provider_list_path, 0700), 0);
    expect_reading(read_existing_provider_list(), "", {}, no_search);
}

// No process writes to it: the call neither waits nor finds anything.
TEST(ProviderListFile, MayBeAFifo)
{
    ASSERT_EQ(mkfifo(provider_list_path, 0600), 0);
    expect_reading(read_existing_provider_list(), "", {}, no_search);
}

TEST(ProviderListFile, IsReadThroughALink)
{
    ASSERT_EQ(symlink("/tmp/elsewhere", provider_list_path), 0);
    expect_list("(1)", {{"1", {1}}});
}

// The store is never read, and no queue is touched.
TEST(ProviderListFile, IsPrintedWhateverTheSwitch)
{
    for (const char *level : {"0", "1", "-1", ""}) {
        store::set("debug_at_cmif", level);
        const ProviderListRun reading = read_provider_list("(1)");
        EXPECT_EQ(reading.run.steps,
                  (Lines{"print File open read done.",
                         "print [shared_CMIF_GetNetworkProviderList]result = (1)",
                         "print [0]sub_result = [1]", "print ptr1 is null."}));
    }
    EXPECT_EQ(store::accesses(), 0);
    EXPECT_EQ(calls::count("msgget"), 0);
}

TEST(ProviderListFile, IsNotChanged)
{
    read_provider_list("(1,\"A\")x");
    std::ifstream file(provider_list_path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "(1,\"A\")x");
}

TEST(ProviderListFile, IsClosedOnEveryPath)
{
    const long before = open_descriptors();
    for (const char *file : {"", "none", "(1)", "(1", "()"})
        read_provider_list(file);
    ASSERT_EQ(unlink(provider_list_path), 0);
    read_existing_provider_list();
    ASSERT_EQ(mkdir(provider_list_path, 0700), 0);
    read_existing_provider_list();
    EXPECT_EQ(open_descriptors(), before);
}

// Without an array the lines are the same.
TEST(ProviderListFile, NeedsNoArray)
{
    const ProviderListRun reading =
        read_provider_list(R"((1,"A","B","C",2,9,888)(1,"A","B","C",2,9)(3)())");
    const Recorded run = record([] { return shared_CMIF_GetNetworkProviderList(nullptr); });
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(run.output, reading.run.output);
    EXPECT_TRUE(run.output.ends_with("]\n" + list_end + "\n"));
}
