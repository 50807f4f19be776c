// A system call that a test depends on: ends the test program, with the reason, when it fails.
#ifndef TESTS_SUPPORT_REQUIRE_H
#define TESTS_SUPPORT_REQUIRE_H

#include <cstdio>
#include <cstdlib>

inline int require(int result, const char *what)
{
    if (result < 0) {
        perror(what);
        abort();
    }
    return result;
}

#endif
