// The rotation of the debug log: its commands in order, and what they do to real files.
#include "cmif/cmif.h"
#include "tests/support/debug_log_file.h"
#include "tests/support/files.h"
#include "tests/support/record.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace
{
const Lines announced_commands = {
    "print [debug_lte] shared_debug_lte_backup_log_file",
    "print [debug_lte] sys_cmd[1]='rm /data/debug_lte_2.txt'",
    "system(rm /data/debug_lte_2.txt)",
    "print [debug_lte] sys_cmd[2]='mv /data/debug_lte_1.txt /data/debug_lte_2.txt'",
    "system(mv /data/debug_lte_1.txt /data/debug_lte_2.txt)",
    "print [debug_lte] sys_cmd[3]='mv /data/debug_lte.txt /data/debug_lte_1.txt'",
    "system(mv /data/debug_lte.txt /data/debug_lte_1.txt)",
    "print [debug_lte] sys_cmd[4]='date > /data/debug_lte.txt'",
    "system(date > /data/debug_lte.txt)",
};

void expect_date_line(const std::string &text)
{
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
    EXPECT_GT(text.size(), 10U) << text;
    EXPECT_EQ(text.back(), '\n');
}

TEST(DebugLogRotation, RunsFourCommandsAndReturnsTheStatusOfTheLast)
{
    for (const int status : {0, 256, 32512, 9, -1}) {
        calls::script("system", {calls::yields(11), calls::yields(22), calls::yields(-1),
                                 calls::yields(status)});
        const Recorded run = record(shared_debug_lte_backup_log_file);
        EXPECT_EQ(run.result, status);
        EXPECT_EQ(run.steps, announced_commands);
    }
}

TEST(DebugLogRotation, ReadsNoSwitch)
{
    calls::script("system", calls::times(4, calls::yields(0)));
    EXPECT_EQ(record(shared_debug_lte_backup_log_file).steps, announced_commands);
    EXPECT_EQ(store::accesses(), 0);
}

TEST(DebugLogRotation, EachGenerationMovesOn)
{
    write_file(debug_log_path, "current\n");
    write_file(debug_log_1_path, "previous\n");
    write_file(debug_log_2_path, "oldest\n");
    const Recorded run = record_with_errors(shared_debug_lte_backup_log_file);
    EXPECT_EQ(run.result, 0);
    EXPECT_EQ(run.steps, announced_commands);
    EXPECT_EQ(run.errors, "");
    expect_date_line(read_file(debug_log_path));
    EXPECT_EQ(read_file(debug_log_1_path), "current\n");
    EXPECT_EQ(read_file(debug_log_2_path), "previous\n");
}

TEST(DebugLogRotation, MissingGenerationsStopNothing)
{
    const Recorded first = record_with_errors(shared_debug_lte_backup_log_file);
    EXPECT_EQ(first.result, 0);
    EXPECT_EQ(first.steps, announced_commands);
    const std::string date = read_file(debug_log_path);
    expect_date_line(date);
    EXPECT_FALSE(file_exists(debug_log_1_path));

    EXPECT_EQ(record_with_errors(shared_debug_lte_backup_log_file).result, 0);
    EXPECT_EQ(read_file(debug_log_1_path), date);
    EXPECT_FALSE(file_exists(debug_log_2_path));
}

TEST(DebugLogRotation, AFailingDateIsTheResult)
{
    std::filesystem::create_directory(debug_log_path); // no file for the date
    write_file(debug_log_2_path, "oldest\n");
    // The third command would move the directory away.
    calls::script("system", {calls::real, calls::real, calls::yields(0), calls::real});
    const Recorded run = record_with_errors(shared_debug_lte_backup_log_file);
    EXPECT_NE(run.result, 0);
    EXPECT_EQ(run.steps, announced_commands);
    EXPECT_FALSE(file_exists(debug_log_2_path));
}

TEST(DebugLogRotation, PendingTextLandsInTheNewFile)
{
    const DebugLogFile log;
    const std::string flushed(100, 'a'), pending(50, 'b');
    shared_debug_lte_write_log_file("%s", flushed.c_str());
    shared_debug_lte_write_log_file("%s", pending.c_str());
    (void)record(shared_debug_lte_backup_log_file);
    const std::string date = read_file(debug_log_path);
    expect_date_line(date);
    EXPECT_EQ(read_file(debug_log_1_path), flushed);
    EXPECT_EQ(DebugLogFile::text(), date + pending);
}
} // namespace
