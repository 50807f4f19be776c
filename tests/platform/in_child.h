// Checks in a process that has not used the store before.
#ifndef TESTS_PLATFORM_IN_CHILD_H
#define TESTS_PLATFORM_IN_CHILD_H

#include "tests/support/child.h"

#include <functional>
#include <unistd.h>

// Ends a child whose check has failed.
inline void require(bool condition)
{
    if (!condition)
        _exit(1);
}

// The exit status of a child that runs `body`: 0 unless a check failed.
inline int in_child(const std::function<void()> &body)
{
    return Child(body).wait();
}

// Gives up the rights of root; a plain user has none. False where there is no second user.
inline bool become_plain_user()
{
    constexpr uid_t plain_user = 65534;
    return geteuid() != 0 || (setresgid(plain_user, plain_user, plain_user) == 0 &&
                              setresuid(plain_user, plain_user, plain_user) == 0);
}

#endif
