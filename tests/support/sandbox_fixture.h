// What the tests of the sandbox share: queues, files, and a pipe that shows which processes live.
#ifndef TESTS_SUPPORT_SANDBOX_FIXTURE_H
#define TESTS_SUPPORT_SANDBOX_FIXTURE_H

#include "sandbox/sandbox.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/msg.h>
#include <unistd.h>

inline constexpr key_t request_queue = 899;
inline constexpr key_t foreign_queue = 4242; // not one of the router's

inline bool has_queue(key_t key)
{
    return msgget(key, 0) != -1;
}

inline bool make_queue(key_t key)
{
    return msgget(key, IPC_CREAT | 0600) != -1;
}

inline void touch(const std::filesystem::path &path)
{
    ASSERT_TRUE(std::ofstream(path).is_open()) << path;
}

// A pipe whose end shows that all processes that inherited its writing side have ended.
class LifetimePipe
{
public:
    LifetimePipe() { EXPECT_EQ(pipe2(ends_, O_CLOEXEC), 0); }
    ~LifetimePipe() { close(ends_[0]); }
    LifetimePipe(const LifetimePipe &) = delete;
    LifetimePipe &operator=(const LifetimePipe &) = delete;

    void put(char mark) const { EXPECT_EQ(write(ends_[1], &mark, 1), 1); }
    char next() const
    {
        char mark = 0;
        return read(ends_[0], &mark, 1) == 1 ? mark : '\0';
    }
    // What is left in it, once no other process can write to it.
    std::string rest()
    {
        close(ends_[1]);
        std::string marks;
        for (char mark = next(); mark != '\0'; mark = next())
            marks += mark;
        return marks;
    }

private:
    int ends_[2] = {-1, -1};
};

// A child that would outlive its parents.
inline void start_daemon()
{
    if (fork() == 0) {
        setsid();
        for (;;)
            pause();
    }
}

// Skips where the launcher could give this test no namespaces of its own.
class Sandbox : public testing::Test
{
protected:
    void SetUp() override
    {
        if (std::getenv("CMIF_SANDBOX") != nullptr)
            GTEST_SKIP() << "no namespaces on this system";
    }
};

#endif
