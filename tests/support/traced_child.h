// A child process whose system calls are counted, and that can be killed before any of them.
#ifndef TESTS_SUPPORT_TRACED_CHILD_H
#define TESTS_SUPPORT_TRACED_CHILD_H

#include <functional>

struct Traced {
    std::function<void()> prepare; // not counted
    std::function<void()> body;
};

// How many system calls `body` makes in a child, without those of its end; -1 if it failed.
int system_calls(const Traced &traced);

// Runs `body` in a child that is killed before its system call number `call`, from 0. Whether it
// was killed; false if it made fewer calls, and ended with 0.
bool killed_before(int call, const Traced &traced);

#endif
