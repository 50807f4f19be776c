// What goes on in and around a sandbox: queues, files, and processes that leave a trail.
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
inline constexpr key_t some_queue = 4242; // none that the sandbox knows

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

/* A pipe that ends when all processes that inherited its writing side have. */
class Trail
{
public:
    Trail() { EXPECT_EQ(pipe2(ends_, O_CLOEXEC), 0); }
    ~Trail() { close(ends_[0]); }
    Trail(const Trail &) = delete;
    Trail &operator=(const Trail &) = delete;

    void leave(char mark) const { EXPECT_EQ(write(ends_[1], &mark, 1), 1); }
    char next() const
    {
        char mark = 0;
        return read(ends_[0], &mark, 1) == 1 ? mark : '\0';
    }
    /* What is left on it once nobody can add to it any more. */
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

/* A child that would outlive its parents. */
inline void leave_daemon_behind()
{
    if (fork() == 0) {
        setsid();
        for (;;)
            pause();
    }
}

/* Cases can say nothing about name spaces of their own where the launcher had none to give. */
class Sandbox : public testing::Test
{
protected:
    void SetUp() override
    {
        if (std::getenv("CMIF_SANDBOX") != nullptr)
            GTEST_SKIP() << "no name spaces on this system";
    }
};

#endif
