// The sandbox in name spaces of its own: what is kept apart, what is kept, and how it ends.
#include "tests/support/sandbox_fixture.h"

#include <csignal>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace
{

namespace fs = std::filesystem;
using sim::run_in_sandbox;

TEST_F(Sandbox, PassesTheExitStatusOn)
{
    EXPECT_EQ(run_in_sandbox([] { return 0; }), 0);
    EXPECT_EQ(run_in_sandbox([] { return 42; }), 42);
    EXPECT_EQ(run_in_sandbox([] { return raise(SIGKILL); }), 128 + SIGKILL);
    EXPECT_EQ(run_in_sandbox([] { return raise(SIGTERM); }), 128 + SIGTERM);
}

TEST_F(Sandbox, SharesNoQueueWithTheOutside)
{
    ASSERT_TRUE(make_queue(some_queue));
    EXPECT_EQ(
        run_in_sandbox([] { return !has_queue(some_queue) && make_queue(request_queue) ? 0 : 1; }),
        0);
    EXPECT_TRUE(has_queue(some_queue));
    EXPECT_FALSE(has_queue(request_queue));
}

TEST_F(Sandbox, HasItsOwnEmptyTmpAndData)
{
    touch("/tmp/outside");
    touch("/data/outside");
    EXPECT_EQ(run_in_sandbox([] {
                  const bool empty = !fs::exists("/tmp/outside") && fs::is_empty("/data");
                  touch("/tmp/inside");
                  touch("/data/inside");
                  struct stat tmp = {}, data = {};
                  const bool open = stat("/tmp", &tmp) == 0 && (tmp.st_mode & 07777) == 01777 &&
                                    stat("/data", &data) == 0 && (data.st_mode & 07777) == 0777;
                  return empty && open && fs::exists("/data/inside") ? 0 : 1;
              }),
              0);
    EXPECT_TRUE(fs::exists("/tmp/outside"));
    EXPECT_FALSE(fs::exists("/tmp/inside"));
    EXPECT_FALSE(fs::exists("/data/inside"));
}

TEST_F(Sandbox, ShowsEverythingElseAsItIs)
{
    struct stat before = {};
    ASSERT_EQ(stat("/etc/passwd", &before), 0);
    const fs::path program = fs::read_symlink("/proc/self/exe");
    EXPECT_EQ(run_in_sandbox([&] {
                  struct stat now = {};
                  const bool same = stat("/etc/passwd", &now) == 0 && now.st_ino == before.st_ino &&
                                    now.st_dev == before.st_dev;
                  return same && fs::exists(program) && access("/dev/null", W_OK) == 0 ? 0 : 1;
              }),
              0);
}

TEST_F(Sandbox, KeepsTheCurrentDirectoryBelowTmp)
{
    fs::create_directories("/tmp/checkout/build/tests");
    fs::create_directories("/tmp/other");
    touch("/tmp/checkout/source");
    fs::current_path("/tmp/checkout/build/tests");
    EXPECT_EQ(run_in_sandbox([] {
                  touch("result");
                  return fs::current_path() == "/tmp/checkout/build/tests" &&
                                 fs::exists("../../source") && !fs::exists("/tmp/other")
                             ? 0
                             : 1;
              }),
              0);
    EXPECT_TRUE(fs::exists("/tmp/checkout/build/tests/result"));
}

TEST_F(Sandbox, KeepsFoldersThatAreNamed)
{
    fs::create_directories("/data/store/saved");
    fs::create_directories("/tmp/store");
    const auto both_kept = [] {
        touch("/data/store/saved/inside");
        return fs::exists("/tmp/store") ? 0 : 1;
    };
    EXPECT_EQ(run_in_sandbox(both_kept, {"/data/store/saved", "/tmp/store", "/tmp/store"}), 0);
    EXPECT_TRUE(fs::exists("/data/store/saved/inside"));
    EXPECT_EQ(run_in_sandbox([] { return fs::exists("/tmp/missing") ? 1 : 0; }, {"/tmp/missing"}),
              0);
}

TEST_F(Sandbox, KeepsTheUserAndCountsProcessesAnew)
{
    const uid_t user = geteuid();
    const gid_t group = getegid();
    EXPECT_EQ(run_in_sandbox([=] {
                  const bool fresh = fs::read_symlink("/proc/self") == std::to_string(getpid());
                  return geteuid() == user && getegid() == group && fresh && getpid() < 10 ? 0 : 1;
              }),
              0);
}

TEST_F(Sandbox, EndsWhatIsLeftOver)
{
    Trail trail;
    EXPECT_EQ(run_in_sandbox([&] {
                  leave_daemon_behind();
                  trail.leave('x');
                  return 0;
              }),
              0);
    EXPECT_EQ(trail.rest(), "x");
}

TEST_F(Sandbox, EndsWithItsCaller)
{
    Trail trail;
    const pid_t caller = fork();
    if (caller == 0)
        std::_Exit(run_in_sandbox([&] {
            trail.leave('x');
            return pause();
        }));
    EXPECT_EQ(trail.next(), 'x');
    EXPECT_EQ(kill(caller, SIGKILL), 0);
    EXPECT_EQ(trail.rest(), "");
    waitpid(caller, nullptr, 0);
}

TEST_F(Sandbox, LeavesItsCallersChildrenAlone)
{
    const pid_t child = fork();
    if (child == 0)
        std::_Exit(7);
    EXPECT_EQ(run_in_sandbox([] { return 0; }), 0);
    setenv("CMIF_SANDBOX", "none", 1);
    EXPECT_EQ(run_in_sandbox([] { return 0; }), 0);
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST_F(Sandbox, WorksWithinItself)
{
    EXPECT_EQ(run_in_sandbox([] {
                  return run_in_sandbox([] {
                      make_queue(some_queue);
                      return run_in_sandbox([] { return has_queue(some_queue) ? 1 : 33; });
                  });
              }),
              33);
}

/* Without the rights that root and the first process of a name space have. */
bool become_plain_user()
{
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 &&
        (setresgid(nobody, nobody, nobody) != 0 || setresuid(nobody, nobody, nobody) != 0))
        return false;
    return prctl(PR_SET_DUMPABLE, 1) == 0; // as after any exec
}

TEST_F(Sandbox, GivesAPlainUserInsideOneOfItsOwn)
{
    EXPECT_EQ(run_in_sandbox([] {
                  make_queue(some_queue);
                  if (!become_plain_user())
                      return 1;
                  return run_in_sandbox([] { return has_queue(some_queue) ? 1 : 33; });
              }),
              33);
}

int shell(const std::string &command)
{
    return WEXITSTATUS(std::system(command.c_str()));
}

TEST_F(Sandbox, IsALauncher)
{
    const std::string isolate = ISOLATE;
    EXPECT_EQ(shell(isolate + " " + isolate + " sh -c 'exit 42'"), 42);
    EXPECT_EQ(shell(isolate + " sh -c 'kill -TERM $$'"), 128 + SIGTERM);
    EXPECT_EQ(shell("echo through | " + isolate + " cat | grep -qx through"), 0);
    EXPECT_EQ(shell(isolate + " /no/such/program 2>/dev/null"), 127);
    EXPECT_EQ(shell(isolate + " 2>/dev/null"), 2);
}

} // namespace
