// What a call of the library did: its result, the bytes it wrote, and its steps in order.
//
//     const Recorded run = record([&] { return shared_CMIF_get_mobileIMEI(out); });
//     EXPECT_EQ(run.result, 0);
//     EXPECT_EQ(run.output, "Get nvram lte_mobile_imei='1'\n");
//     EXPECT_EQ(run.steps, (Lines{"get lte_mobile_imei", "get debug_at_cmif",
//                                 "print Get nvram lte_mobile_imei='1'"}));
//
// Steps are store accesses and system calls (see memory_store.h, system_calls.h) and, between them,
// each line of standard output as "print LINE", or "print without a newline LINE" where none ends
// it. Do not check anything inside the recorded call: what a failing check prints would be recorded
// too.
#ifndef TESTS_SUPPORT_RECORD_H
#define TESTS_SUPPORT_RECORD_H

#include <functional>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

struct Recorded {
    int result = 0;
    std::string output; // standard output, as bytes
    std::string errors; // standard error, from record_with_errors
    Lines steps;
};

Recorded record(const std::function<int()> &call);

// The same with standard error (where a sanitizer would report, hence on request only).
Recorded record_with_errors(const std::function<int()> &call);

// Each line with its newline: the bytes to compare `output` with.
std::string text(const Lines &lines);

// One list after the other.
Lines join(const std::vector<Lines> &parts);

// Adds a step to the recording under way, if there is one. For the stand-ins of this folder.
void note_step(const std::string &step);

#endif
