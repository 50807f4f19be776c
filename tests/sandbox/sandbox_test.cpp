// The sandbox in namespaces of its own: what is private, what stays visible, and how it ends.
#include "tests/support/sandbox_fixture.h"

#include <csignal>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/wait.h>

namespace
{

namespace fs = std::filesystem;
using sandbox::run_in_sandbox;

// Signals every millisecond, from now on.
class TimerSignals
{
public:
    TimerSignals()
    {
        struct sigaction count = {};
        count.sa_handler = [](int) { received_ = received_ + 1; };
        sigaction(SIGALRM, &count, nullptr); // without SA_RESTART
        const struct itimerval interval = {{0, 1000}, {0, 1000}};
        setitimer(ITIMER_REAL, &interval, nullptr);
    }
    ~TimerSignals()
    {
        const struct itimerval none = {};
        setitimer(ITIMER_REAL, &none, nullptr);
    }
    TimerSignals(const TimerSignals &) = delete;
    TimerSignals &operator=(const TimerSignals &) = delete;

    int received() const { return received_; }

private:
    static inline volatile std::sig_atomic_t received_ = 0;
};

TEST_F(Sandbox, ReturnsTheExitStatus)
{
    EXPECT_EQ(run_in_sandbox([] { return 0; }), 0);
    EXPECT_EQ(run_in_sandbox([] { return 42; }), 42);
    EXPECT_EQ(run_in_sandbox([] { return raise(SIGKILL); }), 128 + SIGKILL);
    EXPECT_EQ(run_in_sandbox([] { return raise(SIGTERM); }), 128 + SIGTERM);
}

TEST_F(Sandbox, SharesNoQueueWithTheOutside)
{
    ASSERT_TRUE(make_queue(foreign_queue));
    EXPECT_EQ(run_in_sandbox(
                  [] { return !has_queue(foreign_queue) && make_queue(request_queue) ? 0 : 1; }),
              0);
    EXPECT_TRUE(has_queue(foreign_queue));
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

TEST_F(Sandbox, ShowsTheOtherFilesAsTheyAre)
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

TEST_F(Sandbox, ShowsTheCurrentDirectoryBelowTmp)
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

TEST_F(Sandbox, ShowsNamedDirectories)
{
    fs::create_directories("/data/store/saved");
    fs::create_directories("/tmp/store");
    const auto both_visible = [] {
        touch("/data/store/saved/inside");
        return fs::exists("/tmp/store") ? 0 : 1;
    };
    EXPECT_EQ(run_in_sandbox(both_visible, {"/data/store/saved", "/tmp/store", "/tmp/store"}), 0);
    EXPECT_TRUE(fs::exists("/data/store/saved/inside"));
    EXPECT_EQ(run_in_sandbox([] { return fs::exists("/tmp/missing") ? 1 : 0; }, {"/tmp/missing"}),
              0);
}

TEST_F(Sandbox, KeepsTheUserAndNumbersProcessesFrom1)
{
    const uid_t user = geteuid();
    const gid_t group = getegid();
    EXPECT_EQ(run_in_sandbox([=] {
                  const bool fresh = fs::read_symlink("/proc/self") == std::to_string(getpid());
                  return geteuid() == user && getegid() == group && fresh && getpid() < 10 ? 0 : 1;
              }),
              0);
}

// Signals with a handler interrupt the system calls in which the caller waits: in ten rounds, each
// of them at least once.
TEST_F(Sandbox, SurvivesInterruptedWaits)
{
    const TimerSignals signals;
    for (int round = 0; round < 10; ++round) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(run_in_sandbox([] {
                      usleep(5'000);
                      return 42;
                  }),
                  42);
        EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); // it was isolated, and ran once
    }
    EXPECT_GT(signals.received(), 10);
}

TEST_F(Sandbox, SurvivesInterruptedWaitsWithoutNamespaces)
{
    const TimerSignals signals;
    setenv("CMIF_SANDBOX", "none", 1);
    EXPECT_EQ(run_in_sandbox([] {
                  usleep(50'000);
                  return 42;
              }),
              42);
    EXPECT_GT(signals.received(), 10);
}

TEST_F(Sandbox, LeavesTheCallersInterruptAsItWas)
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGQUIT, SIG_IGN);
    EXPECT_EQ(run_in_sandbox([] {
                  return std::signal(SIGINT, SIG_IGN) == SIG_DFL &&
                                 std::signal(SIGQUIT, SIG_DFL) == SIG_IGN
                             ? 0
                             : 1;
              }),
              0);
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_DFL);
    EXPECT_EQ(std::signal(SIGQUIT, SIG_DFL), SIG_IGN);
}

TEST_F(Sandbox, IgnoresTheInterruptThatIsMeantForTheProgram)
{
    LifetimePipe pipe;
    const pid_t run = fork();
    if (run == 0)
        std::_Exit(run_in_sandbox([&] {
            pipe.put('x');
            usleep(200'000);
            return 7;
        }));
    EXPECT_EQ(pipe.next(), 'x');
    kill(run, SIGINT);
    kill(run, SIGQUIT);
    int status = 0;
    EXPECT_EQ(waitpid(run, &status, 0), run);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7) << status;
}

TEST_F(Sandbox, KillsProcessesThatAreLeft)
{
    LifetimePipe pipe;
    EXPECT_EQ(run_in_sandbox([&] {
                  start_daemon();
                  pipe.put('x');
                  return 0;
              }),
              0);
    EXPECT_EQ(pipe.rest(), "x");
}

TEST_F(Sandbox, EndsWithItsCaller)
{
    LifetimePipe pipe;
    const pid_t caller = fork();
    if (caller == 0)
        std::_Exit(run_in_sandbox([&] {
            pipe.put('x');
            return pause();
        }));
    EXPECT_EQ(pipe.next(), 'x');
    EXPECT_EQ(kill(caller, SIGKILL), 0);
    EXPECT_EQ(pipe.rest(), "");
    waitpid(caller, nullptr, 0);
}

TEST_F(Sandbox, DoesNotReapTheCallersChildren)
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
                      make_queue(foreign_queue);
                      return run_in_sandbox([] { return has_queue(foreign_queue) ? 1 : 33; });
                  });
              }),
              33);
}

// Without the rights that root and the first process of a namespace have.
bool become_plain_user()
{
    constexpr uid_t plain_user = 65534;
    if (geteuid() == 0 && (setresgid(plain_user, plain_user, plain_user) != 0 ||
                           setresuid(plain_user, plain_user, plain_user) != 0))
        return false;
    return prctl(PR_SET_DUMPABLE, 1) == 0; // as after any exec
}

TEST_F(Sandbox, CanBeNestedByAPlainUser)
{
    EXPECT_EQ(run_in_sandbox([] {
                  make_queue(foreign_queue);
                  if (!become_plain_user())
                      return 1;
                  return run_in_sandbox([] { return has_queue(foreign_queue) ? 1 : 33; });
              }),
              33);
}

std::string contents(const char *path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

int shell(const std::string &command)
{
    return WEXITSTATUS(std::system(command.c_str()));
}

TEST_F(Sandbox, HasALauncher)
{
    const std::string isolate = ISOLATE;
    EXPECT_EQ(shell(isolate + " " + isolate + " sh -c 'exit 42'"), 42);
    EXPECT_EQ(shell(isolate + " sh -c 'kill -TERM $$'"), 128 + SIGTERM);
    EXPECT_EQ(shell("echo through | " + isolate + " cat | grep -qx through"), 0);
}

TEST_F(Sandbox, HasALauncherThatReportsMisuse)
{
    const std::string isolate = ISOLATE;
    EXPECT_EQ(shell(isolate + " /no/such/program 2>/tmp/errors"), 127);
    EXPECT_EQ(contents("/tmp/errors"),
              "isolate: cannot run /no/such/program: No such file or directory\n");
    EXPECT_EQ(shell(isolate + " 2>/tmp/errors"), 2);
    EXPECT_EQ(contents("/tmp/errors"), "usage: " + isolate + " PROGRAM [ARGUMENT...]\n");
}

} // namespace
