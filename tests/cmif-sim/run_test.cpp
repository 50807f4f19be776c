// The program cmif-sim, as it is called from a command line.
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <pty.h>
#include <sstream>
#include <string>
#include <sys/msg.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

constexpr const char *program = CMIF_SIM;
constexpr key_t request_queue = 899;

struct Outcome {
    int status;
    std::string output, errors;
};

std::string contents(const char *path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

/* Runs a line of the shell; $S in it is cmif-sim. */
Outcome shell(const std::string &line)
{
    setenv("S", program, 1);
    const int status = std::system(("{ " + line + "; } >/tmp/output 2>/tmp/errors").c_str());
    return {WEXITSTATUS(status), contents("/tmp/output"), contents("/tmp/errors")};
}

bool contains(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

TEST(Run, PassesTheExitStatusOn)
{
    EXPECT_EQ(shell("$S run -- true").status, 0);
    EXPECT_EQ(shell("$S run -- sh -c 'exit 9'").status, 9);
    EXPECT_EQ(shell("$S run -- sh -c 'kill -TERM $$'").status, 128 + SIGTERM);
}

TEST(Run, HandsTheCommandItsWordsUntouched)
{
    EXPECT_EQ(shell("$S run -- printf '%s|' --json '[a,b]' '' -- --help").output,
              "--json|[a,b]||--|--help|");
}

TEST(Run, HasARouterThatServesAtOnce)
{
    const Outcome listing = shell("$S run -- ipcs -q");
    for (const char *key : {"0x00000383", "0x00000384"})
        EXPECT_TRUE(contains(listing.output, key)) << listing.output;
    EXPECT_FALSE(contains(shell("$S run --no-at -- ipcs -q").output, "0x00000383"));
}

TEST(Run, SaysWhatItCanNotRun)
{
    const Outcome missing = shell("PATH=/usr/bin:/bin $S run -- no-such-program");
    EXPECT_EQ(missing.status, 127);
    EXPECT_EQ(missing.errors, "cmif-sim: cannot run no-such-program: No such file or directory\n");
    EXPECT_EQ(shell("$S run -- /etc/passwd").status, 126);
}

TEST(Run, FindsTheProgramsBesideIt)
{
    EXPECT_EQ(shell("PATH=/usr/bin:/bin $S run -- sh -c 'command -v cmif-sim'").output,
              std::string(program) + "\n");
}

TEST(Run, IsAShellWithoutACommand)
{
    const Outcome session =
        shell("echo 'test -d $CMIF_STORE && echo in; exit 5' | SHELL=/bin/sh $S run");
    EXPECT_EQ(session.status, 5);
    EXPECT_EQ(session.output, "in\n");
    EXPECT_EQ(shell("echo 'exit 6' | SHELL=/no/shell $S run").status, 6);
}

TEST(Run, StartsAfreshUnlessGivenAStore)
{
    const Outcome fresh = shell("unset CMIF_STORE; $S run -- sh -c 'echo $CMIF_STORE'");
    EXPECT_EQ(fresh.output.rfind("/tmp/cmif-store-", 0), 0U) << fresh.output;
    EXPECT_EQ(shell("CMIF_STORE=/tmp/mine $S run -- touch /tmp/mine/inside").status, 0);
    EXPECT_TRUE(fs::exists("/tmp/mine/inside"));
    fs::remove_all("/tmp/mine");
}

TEST(Run, RefusesAStoreThatHasARouter)
{
    if (std::getenv("CMIF_SANDBOX") != nullptr)
        GTEST_SKIP() << "no name spaces on this system";
    const Outcome outer =
        shell("CMIF_STORE=/tmp/mine $S run -- sh -c 'cmifctl config set k v; $S run -- true; echo "
              "$?; cmifctl config get k'");
    EXPECT_EQ(outer.output, "1\nv\n");
    EXPECT_TRUE(contains(outer.errors, "cmif-sim: the store is already served by another sandbox; "
                                       "stop it first (/tmp/mine/router.lock)\n"))
        << outer.errors;
    EXPECT_EQ(shell("CMIF_STORE=/tmp/mine $S run -- true").status, 0);
    fs::remove_all("/tmp/mine");
}

TEST(Run, LeavesStandardOutputToTheCommand)
{
    EXPECT_EQ(shell("$S run --verbose -- echo mine").output, "mine\n");
}

TEST(Run, SaysThatTheRouterDidNotStart)
{
    const Outcome failed = shell("CMIF_STORE=/proc/no-store $S run -- echo not reached");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.output, "");
    EXPECT_TRUE(contains(failed.errors, "cmif-sim: the simulated router did not start\n"));
    EXPECT_TRUE(
        contains(failed.errors, "/proc/no-store: No such file or directory; set CMIF_STORE"))
        << failed.errors;
}

TEST(Run, NestsWithARouterEach)
{
    if (std::getenv("CMIF_SANDBOX") != nullptr)
        GTEST_SKIP() << "no name spaces on this system";
    EXPECT_EQ(shell("$S run -- \"$S\" run -- sh -c 'exit 4'").status, 4);
}

TEST(Run, WorksWithoutNameSpacesAndLeavesNoQueue)
{
    const Outcome shared =
        shell("CMIF_SANDBOX=${CMIF_SANDBOX:-none} $S run -- sh -c 'ipcs -q; exit 4'");
    EXPECT_EQ(shared.status, 4) << shared.errors;
    EXPECT_TRUE(contains(shared.output, "0x00000383"));
    EXPECT_EQ(msgget(request_queue, 0), -1);
}

TEST(Serve, RefusesQueuesThatAreServedAlready)
{
    const Outcome second = shell("$S run -- \"$S\" serve");
    EXPECT_EQ(second.status, 1);
    EXPECT_TRUE(contains(second.errors, "already served")) << second.errors;
}

TEST(Serve, EndsOnSignals)
{
    for (const int number : {SIGTERM, SIGINT}) {
        const pid_t server = fork();
        if (server == 0) {
            execl(program, program, "serve", nullptr);
            std::_Exit(1);
        }
        for (int patience = 1000; msgget(request_queue, 0) == -1 && patience > 0; --patience)
            usleep(10'000);
        ASSERT_NE(msgget(request_queue, 0), -1);
        kill(server, number);
        int status = -1;
        waitpid(server, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << number;
        msgctl(msgget(request_queue, 0), IPC_RMID, nullptr);
    }
}

TEST(CommandLine, AnswersMisuseWithStatus2)
{
    for (const char *line :
         {"$S", "$S run cmifctl", "$S run --bogus", "$S run --pace -1", "$S run --pace soon",
          "$S run --seed x", "$S serve -- true", "$S nothing"}) {
        const Outcome misuse = shell(line);
        EXPECT_EQ(misuse.status, 2) << line;
        EXPECT_TRUE(contains(misuse.errors, "--help")) << misuse.errors;
    }
}

TEST(CommandLine, ExplainsItself)
{
    const Outcome help = shell("$S --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(contains(help.output, "cmif-sim run -- cmifctl status")) << help.output;
    EXPECT_TRUE(contains(shell("$S run --help").output, "[-- PROGRAM [ARGUMENT...]]"));
    EXPECT_EQ(shell("$S serve --help").status, 0);
    EXPECT_EQ(shell("$S --version").output.rfind("cmif-sim ", 0), 0U);
}

/* Reads from a terminal until `awaited` came, or nobody writes there any more. */
bool read_until(int terminal, const std::string &awaited)
{
    std::string text;
    char byte = 0;
    while (!contains(text, awaited) && read(terminal, &byte, 1) == 1)
        text += byte;
    return contains(text, awaited);
}

TEST(Terminal, InterruptReachesTheCommandAndNotTheRouter)
{
    int terminal = -1;
    const pid_t session = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (session == -1)
        GTEST_SKIP() << "no pseudo-terminal: " << std::strerror(errno);
    if (session == 0) {
        execl(program, program, "run", "--", "sh", "-c",
              "trap 'ipcs -q; echo interrupted; exit 6' INT; echo ready; "
              "while :; do sleep 0.1; done",
              nullptr);
        std::_Exit(1);
    }
    ASSERT_TRUE(read_until(terminal, "ready"));
    ASSERT_EQ(write(terminal, "\x03", 1), 1);
    EXPECT_TRUE(read_until(terminal, "0x00000383"));
    EXPECT_TRUE(read_until(terminal, "interrupted"));
    int status = -1;
    waitpid(session, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 6);
}

} // namespace
