// What cmifctl asks the user: secrets, and confirmation.
#include "cmifctl/input/questions.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <gtest/gtest.h>
#include <pty.h>
#include <string_view>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace
{

using namespace cmifctl;

// Reads what the process at the terminal's other end writes, up to `text`.
bool read_until(int terminal, const std::string &text)
{
    std::string all;
    for (char c = 0; !all.ends_with(text) && read(terminal, &c, 1) == 1;)
        all += c;
    return all.ends_with(text);
}

// Asks in a process group in the foreground of the terminal, as a shell arranges it. 0 when it is
// stopped with echo on and gets the answer after it is continued.
int stopped_with_echo()
{
    std::signal(SIGTTOU, SIG_IGN);
    const pid_t asking = fork();
    if (asking == 0) {
        setpgid(0, 0);
        tcsetpgrp(STDIN_FILENO, getpid());
        _exit(ask_secrets({{"PIN"}}, false).front() == "1234" ? 0 : 1);
    }
    int status = 0;
    waitpid(asking, &status, WUNTRACED);
    termios now{};
    if (!WIFSTOPPED(status) || tcgetattr(STDIN_FILENO, &now) != 0 || (now.c_lflag & ECHO) == 0)
        return 1;
    kill(asking, SIGCONT);
    waitpid(asking, &status, 0);
    return status == 0 ? 0 : 2;
}

TEST(Questions, AnInterruptDoesNotMentionARequest)
{
    int terminal = -1;
    const pid_t asking = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (asking == -1)
        GTEST_SKIP() << "no pseudo-terminal: " << std::strerror(errno);
    if (asking == 0) {
        try {
            ask_secrets({{"PIN"}}, false);
        } catch (const client::Interrupted &interrupted) {
            _exit(std::string_view(interrupted.consequence).find("request") ==
                          std::string_view::npos
                      ? 0
                      : 2);
        }
        _exit(1);
    }
    ASSERT_TRUE(read_until(terminal, "PIN: "));
    ASSERT_EQ(write(terminal, "\x03", 1), 1);
    int status = 0;
    waitpid(asking, &status, 0);
    EXPECT_EQ(status, 0);
}

// Whether a process that is asked ends by an exception with this signal, and with echo on.
bool leaves_echo_after(int signal, const char *typed)
{
    int terminal = -1;
    const pid_t asking = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (asking == 0) {
        try {
            ask_secrets({{"PIN"}}, false);
        } catch (const client::Interrupted &interrupted) {
            termios now{};
            tcgetattr(STDIN_FILENO, &now);
            _exit(interrupted.signal == signal && (now.c_lflag & ECHO) != 0 ? 0 : 2);
        }
        _exit(1);
    }
    if (asking == -1 || !read_until(terminal, "PIN: "))
        return false;
    if (typed != nullptr)
        EXPECT_EQ(write(terminal, typed, 1), 1);
    else
        kill(asking, signal);
    int status = 0;
    waitpid(asking, &status, 0);
    close(terminal);
    return status == 0;
}

TEST(Questions, LeaveATerminalWithEchoHoweverTheyEnd)
{
    int terminal = -1;
    const pid_t probe = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (probe == -1)
        GTEST_SKIP() << "no pseudo-terminal: " << std::strerror(errno);
    if (probe == 0)
        _exit(0);
    waitpid(probe, nullptr, 0);
    EXPECT_TRUE(leaves_echo_after(SIGINT, "\x03"));
    EXPECT_TRUE(leaves_echo_after(SIGQUIT, "\x1c"));
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGALRM})
        EXPECT_TRUE(leaves_echo_after(signal, nullptr)) << signal;
}

TEST(Questions, AreNotStoppedWithoutEcho)
{
    int terminal = -1;
    const pid_t shell = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (shell == -1)
        GTEST_SKIP() << "no pseudo-terminal: " << std::strerror(errno);
    if (shell == 0)
        _exit(stopped_with_echo());
    ASSERT_TRUE(read_until(terminal, "PIN: "));
    constexpr std::string_view stop_and_answer = "\x1a"
                                                 "1234\n";
    ASSERT_EQ(write(terminal, stop_and_answer.data(), stop_and_answer.size()), 6);
    int status = 0;
    waitpid(shell, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST(Questions, NeedATerminal)
{
    ASSERT_NE(setsid(), -1); // no terminal
    EXPECT_THROW(ask_secrets({{"PIN"}}, false), Failure);
    try {
        confirm({}, "This deletes everything");
        FAIL();
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.status(), Exit::usage);
    }
    Context agreed;
    agreed.arguments.add("yes", "");
    EXPECT_NO_THROW(confirm(agreed, "This deletes everything"));
}

TEST(Questions, ReadOneLineOfInputEach)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], "1234\r\n5678\n", 11), 11);
    close(ends[1]);
    dup2(ends[0], STDIN_FILENO);
    EXPECT_EQ(ask_secrets({{"PIN"}, {"new PIN", true}}, true),
              (std::vector<std::string>{"1234", "5678"}));
    EXPECT_THROW(ask_secrets({{"PIN"}}, true), Failure);
}

} // namespace
