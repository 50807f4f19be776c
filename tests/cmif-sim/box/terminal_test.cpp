// cmif-sim run on a terminal: interrupts, and the shell as a job of its own.
#include "tests/cmif-sim/shell.h"

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

namespace
{

constexpr int time_limit_ms = 10'000;

class Terminal : public testing::Test
{
protected:
    ~Terminal() override
    {
        if (session_ > 0)
            kill(session_, SIGKILL);
    }

    // A session on a terminal of its own that runs a line of the shell; false if there is none.
    bool start(const char *line)
    {
        session_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
        if (session_ == 0) {
            setenv("S", program, 1);
            execl("/bin/sh", "sh", "-c", line, nullptr);
            std::_Exit(1);
        }
        return session_ > 0;
    }
    void type(const std::string &text) const
    {
        EXPECT_EQ(::write(terminal_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    // Reads until `awaited` has come, the session has ended, or nothing comes any more.
    void expect(const std::string &awaited)
    {
        std::string text;
        char byte = 0;
        struct pollfd readable = {terminal_, POLLIN, 0};
        while (!contains(text, awaited) && poll(&readable, 1, time_limit_ms) == 1 &&
               ::read(terminal_, &byte, 1) == 1)
            text += byte;
        ASSERT_TRUE(contains(text, awaited)) << awaited << " not in: " << text;
    }
    int exit_status()
    {
        int status = -1;
        waitpid(session_, &status, 0);
        session_ = -1;
        return WEXITSTATUS(status);
    }

private:
    int terminal_ = -1;
    pid_t session_ = -1;
};

TEST_F(Terminal, InterruptReachesTheCommandAndNotTheRouter)
{
    if (!start("exec $S run -- sh -c \"trap 'ipcs -q; echo interrupted; exit 6' INT; "
               "echo ready; while :; do sleep 0.1; done\""))
        GTEST_SKIP() << "no pseudo-terminal: " << std::strerror(errno);
    expect("ready");
    type("\x03");
    expect("0x00000383");
    expect("interrupted");
    EXPECT_EQ(exit_status(), 6);
}

TEST_F(Terminal, IsTheShellsUntilItEndsAndThenTheCallersAgain)
{
    if (!start("SHELL=/bin/sh; export SHELL; $S run; echo status $?; read line; echo read $line"))
        GTEST_SKIP() << "no pseudo-terminal: " << std::strerror(errno);
    expect("cmif-sim: this shell runs beside a simulated router; try `cmifctl status`. It has its "
           "own /tmp and /data. `exit` ends both.\r\n");
    // The terminal echoes what is typed: only what the shell has computed shows that it ran.
    type("sh -c 'trap exit INT; echo is $((1 + 1)); while :; do sleep 0.1; done'\n");
    expect("is 2\r\n");
    type("\x03");
    type("echo still $((1 + 2)); exit 5\n");
    expect("still 3\r\n");
    expect("status 5\r\n");
    type("more\n");
    expect("read more\r\n");
    EXPECT_EQ(exit_status(), 0);
}

} // namespace
