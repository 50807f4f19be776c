// cmif-sim run: the program or shell beside a router, its store, and errors.
#include "tests/cmif-sim/shell.h"

namespace
{

namespace fs = std::filesystem;

TEST(Run, ReturnsTheExitStatus)
{
    EXPECT_EQ(shell("$S run -- true").status, 0);
    EXPECT_EQ(shell("$S run -- sh -c 'exit 9'").status, 9);
    EXPECT_EQ(shell("$S run -- sh -c 'kill -TERM $$'").status, 128 + SIGTERM);
}

TEST(Run, PassesTheWordsOfTheCommandUnchanged)
{
    EXPECT_EQ(shell("$S run -- printf '%s|' --json '[a,b]' '' -- --help").output,
              "--json|[a,b]||--|--help|");
}

TEST(Run, HasARouterThatIsReady)
{
    const Outcome listing = shell("$S run -- ipcs -q");
    for (const char *key : {"0x00000383", "0x00000384"})
        EXPECT_TRUE(contains(listing.output, key)) << listing.output;
    EXPECT_EQ(listing.errors, "");
}

TEST(Run, LeavesOutADaemon)
{
    const Outcome no_at = shell("$S run --no-at -- sh -c 'ipcs -q; cat /tmp/lte_qmi*'");
    EXPECT_FALSE(contains(no_at.output, "0x00000383")) << no_at.output;
    EXPECT_TRUE(contains(no_at.output, "on")) << no_at.output;
    const Outcome no_qmi = shell("$S run --no-qmi -- sh -c 'ipcs -q; ls /tmp/lte_qmi*'");
    EXPECT_TRUE(contains(no_qmi.output, "0x00000383")) << no_qmi.output;
    EXPECT_FALSE(contains(no_qmi.output, "lte_qmi")) << no_qmi.output;
}

TEST(Run, ReportsACommandThatItCanNotRun)
{
    const Outcome missing = shell("PATH=/usr/bin:/bin $S run -- no-such-program");
    EXPECT_EQ(missing.status, 127);
    EXPECT_EQ(missing.errors, "cmif-sim: cannot run no-such-program: No such file or directory\n");
    const Outcome forbidden = shell("$S run -- /etc/passwd");
    EXPECT_EQ(forbidden.status, 126);
    EXPECT_EQ(forbidden.errors, "cmif-sim: cannot run /etc/passwd: Permission denied\n");
}

TEST(Run, FindsTheProgramsBesideIt)
{
    EXPECT_EQ(shell("PATH=/usr/bin:/bin $S run -- sh -c 'command -v cmif-sim'").output,
              std::string(program) + "\n");
    EXPECT_EQ(shell("unset PATH; $S run -- sh -c 'command -v ls && command -v cmif-sim'").status,
              0);
}

TEST(Run, IsAShellWithoutACommand)
{
    const Outcome session =
        shell("echo 'test -d $CMIF_STORE && echo in; exit 5' | SHELL=/bin/sh $S run");
    EXPECT_EQ(session.status, 5);
    EXPECT_EQ(session.output, "in\n");
    EXPECT_EQ(session.errors, ""); // without a terminal
    EXPECT_EQ(shell("echo 'exit 6' | SHELL=/no/shell $S run").status, 6);
    EXPECT_EQ(shell("unset SHELL; echo 'exit 7' | $S run").status, 7);
}

TEST(Run, ReportsAShellThatItCanNotRun)
{
    fs::create_directories("/tmp/shells");
    std::ofstream("/tmp/shells/shell") << "#!/no/interpreter\n";
    fs::permissions("/tmp/shells/shell", fs::perms::all);
    const Outcome failed = shell("cd /tmp/shells; SHELL=/tmp/shells/shell $S run </dev/null");
    EXPECT_EQ(failed.status, 127);
    EXPECT_EQ(failed.errors, "cmif-sim: cannot run /tmp/shells/shell: No such file or directory\n");
}

TEST(Run, HasANewStoreUnlessGivenOne)
{
    const Outcome fresh = shell("unset CMIF_STORE; $S run -- sh -c 'echo $CMIF_STORE'");
    EXPECT_EQ(fresh.output.rfind("/tmp/cmif-run-", 0), 0U) << fresh.output;
    EXPECT_EQ(shell("CMIF_STORE=/tmp/mine $S run -- touch /tmp/mine/inside").status, 0);
    EXPECT_TRUE(fs::exists("/tmp/mine/inside"));
    fs::remove_all("/tmp/mine");
}

TEST(Run, RemovesItsOwnStore)
{
    const Outcome run = shell("unset CMIF_STORE; export CMIF_SANDBOX=${CMIF_SANDBOX:-none}; "
                              "$S run -- sh -c 'echo $CMIF_STORE; test -d $CMIF_STORE'");
    EXPECT_EQ(run.status, 0);
    ASSERT_GT(run.output.size(), 1U);
    EXPECT_FALSE(fs::exists(run.output.substr(0, run.output.size() - 1))) << run.output;
}

TEST(Run, RefusesAStoreThatHasARouter)
{
    if (!has_namespaces())
        GTEST_SKIP() << "no namespaces on this system";
    const Outcome outer =
        shell("CMIF_STORE=/tmp/mine $S run -- sh -c 'cmifctl config set k v; $S run -- true; echo "
              "$?; cmifctl config get k'");
    EXPECT_EQ(outer.output, "1\nv\n");
    EXPECT_EQ(outer.errors, "cmif-sim: the store is already served by another sandbox; stop it "
                            "first (/tmp/mine/router.lock)\n"
                            "cmif-sim: the simulated router did not start\n");
    EXPECT_EQ(shell("CMIF_STORE=/tmp/mine $S run -- true").status, 0);
    fs::remove_all("/tmp/mine");
}

TEST(Run, PrintsRecordsOnStandardErrorIfVerbose)
{
    const std::string request = " -- sh -c 'echo mine; echo 1234 | cmifctl sim enter-pin - >&2'";
    const Outcome verbose = shell("$S run --verbose" + request);
    EXPECT_EQ(verbose.output, "mine\n");
    EXPECT_TRUE(contains(verbose.errors, " -> 12 ")) << verbose.errors;
    EXPECT_FALSE(contains(shell("$S run" + request).errors, " -> 12 "));
}

TEST(Run, ReportsThatTheRouterDidNotStart)
{
    const Outcome failed = shell("CMIF_STORE=/proc/no-store $S run -- echo not reached");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.output, "");
    EXPECT_EQ(
        failed.errors,
        "cmif store: /proc/no-store: No such file or directory; set CMIF_STORE to a directory "
        "that you can write\n"
        "cmif-sim: the simulated router did not start\n");
}

TEST(Run, ReportsAStoreWhosePathCanNotBeFound)
{
    const Outcome failed = shell("mkdir /tmp/gone; cd /tmp/gone; rmdir /tmp/gone; "
                                 "CMIF_STORE=mine $S run -- echo not reached");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.output, "");
    EXPECT_EQ(failed.errors.rfind("cmif-sim: filesystem error: ", 0), 0U) << failed.errors;
    EXPECT_TRUE(contains(failed.errors, "No such file or directory")) << failed.errors;
}

TEST(Run, CanBeNestedWithARouterEach)
{
    if (!has_namespaces())
        GTEST_SKIP() << "no namespaces on this system";
    EXPECT_EQ(shell("$S run -- \"$S\" run -- sh -c 'exit 4'").status, 4);
}

// The process between the two is killed, which cleans up otherwise.
TEST(Run, EndsItsCommandWhenItIsKilled)
{
    const Outcome killed = shell(
        "export CMIF_SANDBOX=none; $S run -- sh -c 'echo $$; exec sleep 1000' & "
        "while ! test -s /tmp/output; do sleep 0.01; done; "
        "kill -KILL $(cat /proc/$!/task/$!/children); wait $!; "
        "for i in 1 2 3 4 5 6 7 8 9 10; do kill -0 $(cat /tmp/output) || break; sleep 0.1; done");
    EXPECT_EQ(killed.status, 0);
    EXPECT_TRUE(contains(killed.errors, "No such process")) << killed.errors;
}

TEST(Run, WorksWithoutNamespacesAndLeavesNoQueue)
{
    const Outcome shared =
        shell("CMIF_SANDBOX=${CMIF_SANDBOX:-none} $S run -- sh -c 'ipcs -q; exit 4'");
    EXPECT_EQ(shared.status, 4) << shared.errors;
    EXPECT_TRUE(contains(shared.output, "0x00000383"));
    EXPECT_EQ(msgget(at_request_queue, 0), -1);
}

} // namespace
