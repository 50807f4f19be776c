// The debug log under many writers: threads of one process, and processes that share the file.
#include "cmif/cmif.h"
#include "tests/support/child.h"
#include "tests/support/debug_log_file.h"
#include "tests/support/files.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <sstream>
#include <thread>
#include <vector>

namespace
{
constexpr int processes = 4;
constexpr int threads = 8;
constexpr int lines = 100; // of each thread

// From 20 to 180 bytes: most fit the buffer, some go directly to the file.
std::string line_of(int process, int thread, int number)
{
    const std::string head =
        std::to_string(process) + ' ' + std::to_string(thread) + ' ' + std::to_string(number) + ' ';
    const auto tail = static_cast<size_t>(20 + (number * 37 + thread * 11) % 150);
    return head + std::string(tail, static_cast<char>('a' + thread)) + '\n';
}

void write_lines(int process)
{
    shared_debug_lte_mutex_init();
    std::vector<std::thread> all;
    for (int thread = 0; thread < threads; ++thread)
        all.emplace_back([=] {
            for (int number = 0; number < lines; ++number)
                shared_debug_lte_write_log_file("%s", line_of(process, thread, number).c_str());
        });
    for (std::thread &thread : all)
        thread.join();
    shared_debug_lte_mutex_deinit();
}

size_t bytes_written()
{
    size_t sum = 0;
    for (int thread = 0; thread < threads; ++thread)
        for (int number = 0; number < lines; ++number)
            sum += line_of(0, thread, number).size();
    return sum;
}

// Every line of the file is whole and next in its thread; how many bytes each process got there.
std::map<int, size_t> bytes_of_whole_lines()
{
    std::map<int, size_t> bytes;
    std::map<std::pair<int, int>, int> next;
    std::istringstream file(read_file(debug_log_path));
    for (std::string line; std::getline(file, line);) {
        int process = -1, thread = -1, number = -1;
        std::istringstream(line) >> process >> thread >> number;
        EXPECT_EQ(line + '\n', line_of(process, thread, number));
        EXPECT_EQ(number, (next[{process, thread}])++) << line;
        bytes[process] += line.size() + 1;
    }
    return bytes;
}

// What is missing is what was pending: the last lines, up to a buffer of them.
void expect_all_but_pending(const std::map<int, size_t> &bytes, int count)
{
    EXPECT_EQ(bytes.size(), static_cast<size_t>(count));
    for (const auto &[process, size] : bytes) {
        EXPECT_LE(size, bytes_written()) << process;
        EXPECT_GE(size + 128, bytes_written()) << process;
    }
}

TEST(DebugLogWriters, ThreadsOfOneProcessLoseNothing)
{
    store::set("debug_lte_enable", "1");
    write_lines(0);
    expect_all_but_pending(bytes_of_whole_lines(), 1);
}

TEST(DebugLogWriters, ThreadsOfSeveralProcessesLoseNothing)
{
    store::set("debug_lte_enable", "1");
    std::vector<std::unique_ptr<Child>> children;
    for (int process = 0; process < processes; ++process)
        children.push_back(std::make_unique<Child>([=] { write_lines(process); }));
    for (const auto &child : children)
        EXPECT_EQ(child->wait(), 0);
    expect_all_but_pending(bytes_of_whole_lines(), processes);
}
} // namespace
