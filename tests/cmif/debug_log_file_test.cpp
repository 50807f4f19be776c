// The debug log: what reaches the file, and when.
#include "cmif/cmif.h"
#include "tests/support/debug_log_file.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace
{
TEST(DebugLogFile, AMessageThatDoesNotFitWritesWhatIsPending)
{
    init_log("1");
    write_log(std::string(100, 'a'));
    EXPECT_FALSE(file_exists(debug_log_path));
    write_log(std::string(30, 'b'));
    EXPECT_EQ(read_file(debug_log_path), std::string(100, 'a'));
    write_log(std::string(98, 'c'));
    EXPECT_EQ(read_file(debug_log_path), std::string(100, 'a') + std::string(30, 'b'));
}

struct Fit {
    size_t first, second;
    size_t in_file;
};

TEST(DebugLogFile, BlocksEndWhereTheNextMessageDoesNotFit)
{
    const Fit fits[] = {{97, 30, 0},   {98, 30, 98},   {127, 0, 0},     {126, 1, 0},
                        {127, 1, 127}, {1, 126, 0},    {1, 127, 1},     {0, 127, 0},
                        {0, 128, 0},   {1, 128, 1},    {127, 128, 127}, {128, 0, 128},
                        {128, 1, 128}, {128, 128, 128}};
    for (const Fit &fit : fits) {
        init_log("1");
        (void)DebugLogFile::text(); // what the last row left
        write_log(std::string(200, '-'));
        std::filesystem::remove(debug_log_path);
        write_log(std::string(fit.first, 'a'));
        write_log(std::string(fit.second, 'b'));
        EXPECT_EQ(read_file(debug_log_path), std::string(fit.in_file, 'a'))
            << fit.first << " and " << fit.second;
        EXPECT_EQ(DebugLogFile::text(), std::string(fit.first, 'a') + std::string(fit.second, 'b'));
        std::filesystem::remove(debug_log_path);
    }
}

TEST(DebugLogFile, AMessageLargerThanTheBufferIsWrittenAfterWhatIsPending)
{
    init_log("1");
    std::string all;
    for (const size_t length : {129U, 130U, 200U, 254U, 255U}) {
        write_log("pending");
        write_log(std::string(length, 'd'));
        all += "pending" + std::string(length, 'd');
        EXPECT_EQ(read_file(debug_log_path), all) << length;
    }
}

TEST(DebugLogFile, MessagesAreCutAt255Characters)
{
    init_log("1");
    write_log(std::string(255, 'a') + "b");
    EXPECT_EQ(read_file(debug_log_path), std::string(255, 'a'));
    write_log(std::string(300, 'c'));
    EXPECT_EQ(read_file(debug_log_path), std::string(255, 'a') + std::string(255, 'c'));
    shared_debug_lte_write_log_file("%0300d", 7);
    EXPECT_EQ(read_file(debug_log_path),
              std::string(255, 'a') + std::string(255, 'c') + std::string(255, '0'));
}

TEST(DebugLogFile, FormatsAndAddsNothing)
{
    const DebugLogFile log;
    EXPECT_EQ(shared_debug_lte_write_log_file("[%s] %d %% %5.1f|", "a%sb", -3, 2.5), 0);
    write_log("%d%n");
    write_log("\n\n");
    write_log("");
    EXPECT_EQ(DebugLogFile::text(), "[a%sb] -3 %   2.5|%d%n\n\n");
}

TEST(DebugLogFile, SeveralBlocksKeepTheirOrder)
{
    const DebugLogFile log;
    std::string all;
    for (int i = 0; i < 150; ++i) {
        const std::string line =
            std::to_string(i) + std::string(static_cast<size_t>(i) % 140, '.') + "\n";
        write_log(line);
        all += line;
        const std::string written = read_file(debug_log_path);
        EXPECT_EQ(written, all.substr(0, written.size()));
        EXPECT_LE(all.size() - written.size(), 128U);
    }
    EXPECT_EQ(DebugLogFile::text(), all);
}

TEST(DebugLogFile, TheFileIsAppendedTo)
{
    write_file(debug_log_path, "older\n");
    init_log("1");
    write_log(std::string(200, 'a'));
    EXPECT_EQ(read_file(debug_log_path), "older\n" + std::string(200, 'a'));
}

TEST(DebugLogFile, TheFileIsOpenedForEachBlockAndClosed)
{
    init_log("1");
    const long before = open_descriptors();
    write_log(std::string(200, 'a'));
    EXPECT_EQ(open_descriptors(), before);
    std::filesystem::rename(debug_log_path, "/data/elsewhere");
    write_log(std::string(200, 'b'));
    EXPECT_EQ(open_descriptors(), before);
    EXPECT_EQ(read_file(debug_log_path), std::string(200, 'b'));
    EXPECT_EQ(read_file("/data/elsewhere"), std::string(200, 'a'));
}

TEST(DebugLogFile, DeinitDoesNotFlush)
{
    init_log("1");
    write_log(std::string(127, 'a'));
    shared_debug_lte_mutex_deinit();
    EXPECT_FALSE(file_exists(debug_log_path));
}

TEST(DebugLogFile, TextPendingAtDeinitIsStillPendingAfterTheNextInit)
{
    init_log("1");
    write_log(std::string(50, 'a'));
    shared_debug_lte_mutex_deinit();
    init_log("1");
    write_log(std::string(100, 'b'));
    EXPECT_EQ(read_file(debug_log_path), std::string(50, 'a'));
}
} // namespace
