// Calls in a child process.
#include "client/call.h"
#include "client/call_end.h"
#include "client/file.h"
#include "client/request.h"
#include "client/signals.h"
#include "tests/support/child.h"
#include "tests/support/client_calls.h"
#include "tests/support/files.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using namespace client;
using Clock = std::chrono::steady_clock;

TEST(CallInChild, ReturnsResultAndOutput)
{
    const Answer answer = call({}, {.request = no_request("it"), .body = [](Json &output) {
                                        output = {{"bytes", "a\xff"}, {"pid", getpid()}};
                                        return -7;
                                    }});
    EXPECT_EQ(answer.result, -7);
    EXPECT_EQ(answer.output["bytes"], "a\xff");
    EXPECT_NE(answer.output["pid"], getpid());
}

TEST(CallInChild, ReturnsMoreThanAPipeHolds)
{
    const Answer answer = call({}, {.request = no_request("it"), .body = [](Json &output) {
                                        output = std::string(1'000'000, 'x');
                                        return 0;
                                    }});
    EXPECT_EQ(answer.output.get<std::string>().size(), 1'000'000U);
}

TEST(CallInChild, KeepsTheLibrarysLinesApart)
{
    const Call noisy{.request = no_request("it"), .body = [](Json &) {
                         std::printf("set_string=1\nline\n");
                         return 0;
                     }};
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    call({}, noisy);
    std::string lines;
    call({.trace = [&lines](std::string_view line) { lines.append(line) += '\n'; }}, noisy);
    EXPECT_EQ(lines, "set_string=1\nline\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(CallInChild, PassesOnAFailure)
{
    const Failure failure = failure_of({.request = no_request("it"), .body = [](Json &) -> int {
                                            throw Failure(Exit::invalid, "what", "hint");
                                        }});
    EXPECT_EQ(failure.status(), Exit::invalid);
    EXPECT_STREQ(failure.what(), "what");
    EXPECT_EQ(failure.hint(), "hint");
}

TEST(CallInChild, ReportsHowItDied)
{
    const Failure failure = failure_of(
        {.request = no_request("it"), .body = [](Json &) { return std::raise(SIGKILL); }});
    EXPECT_EQ(failure.status(), Exit::other);
    EXPECT_STREQ(failure.what(), "the call it was ended by signal 9");
}

TEST(CallInChild, EndsWithAllThatItStarted)
{
    const Call starting{.request = no_request("it"), .body = [](Json &) {
                            return std::system("echo $$ > /tmp/shell; exec sleep 100");
                        }};
    EXPECT_EQ(failure_of(starting, {.timeout = 0.3}).status(), Exit::no_answer);
    const int shell = std::stoi(read_file("/tmp/shell"));
    for (int i = 0; i < 1000 && kill(shell, 0) == 0; ++i)
        usleep(1000);
    EXPECT_NE(kill(shell, 0), 0);
}

// As on a machine that leaves the call no processor between the send and the count of it.
TEST(CallInChild, FinishesARecordThatPassesBeforeItIsEnded)
{
    const Call passing{.request = no_request("it"), .body = [](Json &) {
                           const Exchange exchange;
                           const auto end = Clock::now() + std::chrono::milliseconds(600);
                           while (Clock::now() < end) {}
                           write_file("/tmp/counted", "");
                           return 0;
                       }};
    EXPECT_EQ(failure_of(passing, {.timeout = 0.1}).status(), Exit::no_answer);
    EXPECT_TRUE(file_exists("/tmp/counted"));
}

// A shell that is still at work when the call crashes could create a marker afterwards.
TEST(CallInChild, ThatCrashesEndsWithAllThatItStarted)
{
    const Call crashing{.request = no_request("it"), .body = [](Json &) {
                            EXPECT_EQ(std::system("(sleep 0.1; touch /tmp/late) &"), 0);
                            return std::raise(SIGKILL);
                        }};
    EXPECT_EQ(failure_of(crashing).status(), Exit::other);
    usleep(300'000);
    EXPECT_FALSE(file_exists("/tmp/late"));
}

TEST(CallInChild, ReadsNoStandardInput)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], "y", 1), 1);
    dup2(ends[0], STDIN_FILENO);
    const Answer answer = call({}, {.request = no_request("it"), .body = [](Json &) {
                                        char c = 0;
                                        return static_cast<int>(read(STDIN_FILENO, &c, 1));
                                    }});
    EXPECT_EQ(answer.result, 0);
}

TEST(CallInChild, ReportsHowItDiedWhereTheParentIgnoresIt)
{
    std::signal(SIGCHLD, SIG_IGN);
    const Failure failure = failure_of(
        {.request = no_request("it"), .body = [](Json &) { return std::raise(SIGKILL); }});
    EXPECT_STREQ(failure.what(), "the call it was ended by signal 9");
}

TEST(CallInChild, NeverDumpsCore)
{
    const Call looking{.request = no_request("it"), .body = [](Json &output) {
                           rlimit limit{};
                           getrlimit(RLIMIT_CORE, &limit);
                           output = limit.rlim_max;
                           return prctl(PR_GET_DUMPABLE);
                       }};
    EXPECT_EQ(call({}, looking).result, 1);
    forbid_core_dumps();
    const Answer answer = call({}, looking);
    EXPECT_EQ(answer.result, 0);
    EXPECT_EQ(answer.output, 0);
    for (const int signal : {SIGABRT, SIGQUIT}) {
        const pid_t crashing = fork();
        if (crashing == 0) {
            std::signal(signal, SIG_DFL);
            std::raise(signal);
            _exit(0);
        }
        int status = 0;
        waitpid(crashing, &status, 0);
        EXPECT_EQ(WTERMSIG(status), signal);
        EXPECT_FALSE(WCOREDUMP(status));
    }
}

// The shell would create the marker later.
TEST(CallInChild, LeavesNothingWhenItsCallerIsKilled)
{
    const Call starting{.request = no_request("it"),
                        .body =
                            [](Json &) {
                                File(creat("/tmp/marker", 0600));
                                return std::system(
                                    "echo $$ > /tmp/shell; sleep 0.3; echo 1 > /tmp/marker");
                            },
                        .marker = "/tmp/marker"};
    Child caller([&] { call({}, starting); });
    while (access("/tmp/shell", F_OK) != 0)
        usleep(1000);
    caller.signal(SIGKILL);
    for (int i = 0; i < 1000 && access("/tmp/marker", F_OK) == 0; ++i)
        usleep(1000);
    usleep(500'000);
    EXPECT_NE(access("/tmp/marker", F_OK), 0);
}

TEST(CallInChild, RefusesAMarkerThatIsNotARegularFile)
{
    ASSERT_EQ(mkfifo("/tmp/marker", 0600), 0);
    const Failure failure = failure_of(
        {.request = no_request("it"), .body = [](Json &) { return 0; }, .marker = "/tmp/marker"});
    EXPECT_STREQ(failure.what(), "/tmp/marker is not a regular file; the call would write into it");
}

TEST(CallInChild, LeavesNoMarkerWhenItIsKilled)
{
    const char *const marker = "/tmp/marker";
    Call marking{.request = no_request("it"),
                 .body =
                     [marker](Json &) {
                         File(creat(marker, 0600));
                         pause();
                         return 0;
                     },
                 .marker = marker};
    EXPECT_EQ(failure_of(marking, {.timeout = 0.3}).status(), Exit::no_answer);
    EXPECT_NE(access(marker, F_OK), 0);

    marking.body = [marker](Json &) {
        File(creat(marker, 0600));
        return std::raise(SIGKILL);
    };
    EXPECT_EQ(failure_of(marking).status(), Exit::other);
    EXPECT_NE(access(marker, F_OK), 0);

    File(creat(marker, 0600)); // another process's
    EXPECT_EQ(failure_of(marking).status(), Exit::other);
    EXPECT_EQ(access(marker, F_OK), 0);
}

} // namespace
