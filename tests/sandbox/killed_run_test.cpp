// The sandbox without namespaces, killed: what ends with it, and what the next run does.
#include "tests/support/sandbox_fixture.h"

#include <csignal>
#include <iterator>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using sandbox::run_in_sandbox;

constexpr const char *notice = "cmif-sim: no namespaces (CMIF_SANDBOX=none): "
                               "sharing this system's queues, one run at a time\n";
constexpr const char *cleaned_up = "cmif-sim: cleaned up after a run that was killed\n";

std::string mark_path()
{
    return "/tmp/cmif-sim-run-" + std::to_string(geteuid());
}

std::vector<pid_t> children_of(pid_t process)
{
    const std::string number = std::to_string(process);
    std::ifstream children("/proc/" + number + "/task/" + number + "/children");
    return {std::istream_iterator<pid_t>(children), {}};
}

pid_t only_child_of(pid_t process)
{
    return children_of(process).at(0);
}

std::string name_of(pid_t process)
{
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
    return name;
}

class KilledRun : public Sandbox
{
protected:
    void SetUp() override
    {
        Sandbox::SetUp();
        setenv("CMIF_SANDBOX", "none", 1);
    }

    // A run in a process group of its own that has a queue, and waits.
    void start(const std::function<void()> &more = [] {})
    {
        launcher_ = fork();
        if (launcher_ == 0) {
            setpgid(0, 0);
            std::_Exit(run_in_sandbox([&] {
                make_queue(request_queue);
                more();
                pipe_.put('x');
                return pause();
            }));
        }
        ASSERT_EQ(pipe_.next(), 'x');
    }
    // The result of a run; `said_` receives what it printed after the notice.
    int run(const std::function<int()> &inside)
    {
        testing::internal::CaptureStderr();
        const int status = run_in_sandbox(inside);
        said_ = testing::internal::GetCapturedStderr();
        EXPECT_TRUE(said_.starts_with(notice)) << said_;
        said_.erase(0, std::string(notice).size());
        return status;
    }
    void reap() const { waitpid(launcher_, nullptr, 0); }

    LifetimePipe pipe_;
    pid_t launcher_ = -1;
    std::string said_;
};

TEST_F(KilledRun, StillCleansUpWhenKilledWithItsProcessGroup)
{
    start(start_daemon);
    ASSERT_EQ(kill(-launcher_, SIGKILL), 0);
    reap();
    EXPECT_EQ(pipe_.rest(), "");
    EXPECT_EQ(run([] { return has_queue(request_queue) ? 1 : 0; }), 0);
    EXPECT_EQ(said_, "");
}

// As by killall -9, which takes a program by its name.
TEST_F(KilledRun, StillCleansUpWhenKilledByName)
{
    start([] {
        if (fork() == 0) {
            prctl(PR_SET_NAME, "background");
            setsid();
            for (;;)
                pause();
        }
    });
    const std::string own = name_of(getpid());
    std::vector<pid_t> all{launcher_};
    for (std::size_t i = 0; i < all.size(); ++i)
        for (const pid_t child : children_of(all[i]))
            all.push_back(child);
    EXPECT_EQ(all.size(), 4U); // the launcher, what watches over it, the work, the background
    for (const pid_t process : all)
        if (name_of(process) == own)
            kill(process, SIGKILL);
    reap();
    EXPECT_EQ(pipe_.rest(), "");
    EXPECT_EQ(run([] { return has_queue(request_queue) ? 1 : 0; }), 0);
    EXPECT_EQ(said_, "");
}

TEST_F(KilledRun, WithoutACleanUpIsCleanedUpByTheNext)
{
    start();
    ASSERT_EQ(kill(only_child_of(launcher_), SIGKILL), 0);
    reap();
    EXPECT_TRUE(has_queue(request_queue));
    EXPECT_EQ(run([] { return has_queue(request_queue) ? 1 : 0; }), 0);
    EXPECT_EQ(said_, cleaned_up);
    EXPECT_EQ(run([] { return 0; }), 0);
    EXPECT_EQ(said_, "");
}

TEST_F(KilledRun, RemovesTheDataFolderThatItCreated)
{
    fs::create_directories("/data");
    for (const bool creates_it : {false, true}) {
        if (creates_it && rmdir("/data") != 0)
            GTEST_SKIP() << "/data is a mount point here";
        start();
        kill(only_child_of(launcher_), SIGKILL);
        reap();
        EXPECT_TRUE(fs::exists("/data"));
        EXPECT_EQ(run([] { return 0; }), 0);
        EXPECT_EQ(fs::exists("/data"), !creates_it);
    }
}

TEST_F(KilledRun, HasNoMarkOnceItHasEnded)
{
    EXPECT_EQ(run([] { return fs::exists(mark_path()) ? 5 : 1; }), 5);
    EXPECT_FALSE(fs::exists(mark_path()));
}

// Any user may create a file of that name.
TEST_F(KilledRun, IsNotRecognisedByAnotherUsersMark)
{
    touch(mark_path());
    if (chown(mark_path().c_str(), 65534, 65534) != 0)
        GTEST_SKIP() << "there is only one user here";
    ASSERT_TRUE(make_queue(request_queue));
    EXPECT_EQ(run([] { return 0; }), 1);
    EXPECT_EQ(said_.rfind("cmif-sim: already in use: queue 899; ", 0), 0U) << said_;
    EXPECT_TRUE(has_queue(request_queue));
    EXPECT_TRUE(fs::exists(mark_path()));
}

TEST_F(KilledRun, IsNotRecognisedByASymbolicLink)
{
    fs::create_symlink("/etc/passwd", mark_path());
    ASSERT_TRUE(make_queue(request_queue));
    EXPECT_EQ(run([] { return 0; }), 1);
    EXPECT_TRUE(has_queue(request_queue));
}

// A router that was started since then has taken the queues over.
TEST_F(KilledRun, IsNotCleanedUpWhileARouterServes)
{
    for (const char *path : {"/tmp/cmif-sim-at.lock", "/tmp/cmif-sim-qmi.lock"}) {
        LifetimePipe ready;
        const pid_t router = fork();
        if (router == 0) {
            const int file = open(path, O_RDWR | O_CREAT, 0666);
            struct flock lock = {};
            lock.l_type = F_WRLCK;
            if (fcntl(file, F_SETLK, &lock) == 0)
                ready.put('x');
            pause();
        }
        ASSERT_EQ(ready.next(), 'x');
        touch(mark_path());
        ASSERT_TRUE(make_queue(request_queue));
        EXPECT_EQ(run([] { return 0; }), 1) << path;
        EXPECT_TRUE(has_queue(request_queue)) << path;
        kill(router, SIGKILL);
        waitpid(router, nullptr, 0);
        EXPECT_EQ(run([] { return 0; }), 0) << path;
        EXPECT_EQ(said_, cleaned_up);
    }
}

TEST_F(KilledRun, IsNamedToTheRunThatWaitsForIt)
{
    start();
    const pid_t waiting = fork();
    if (waiting == 0) {
        dup2(open("/tmp/said", O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
        std::_Exit(run_in_sandbox([] { return 5; }));
    }
    const std::string line = "cmif-sim: waiting for another run to end, that of process " +
                             std::to_string(launcher_) + " (/tmp/cmif-sim-run.lock)\n";
    std::string said;
    for (int tries = 500; said.find("waiting") == std::string::npos && tries > 0; --tries) {
        usleep(10'000);
        std::ifstream file("/tmp/said");
        said.assign(std::istreambuf_iterator<char>(file), {});
    }
    EXPECT_EQ(said, notice + line);
    kill(launcher_, SIGKILL);
    reap();
    int status = 0;
    waitpid(waiting, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 5);
}

// As in a container that a debugger has entered: /proc has other numbers than the processes here.
TEST_F(KilledRun, EndsWhatItsWorkLeftWhereProcBelongsToAnotherNamespace)
{
    const auto first = static_cast<pid_t>(
        syscall(SYS_clone, CLONE_NEWPID | SIGCHLD, nullptr, nullptr, nullptr, nullptr));
    if (first == 0)
        std::_Exit(run_in_sandbox([this] {
            start_daemon();
            pipe_.put('x');
            return 7;
        }));
    EXPECT_EQ(pipe_.next(), 'x');
    int status = 0;
    for (int tries = 500; waitpid(first, &status, WNOHANG) == 0 && tries > 0; --tries)
        usleep(10'000);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7) << status;
    kill(first, SIGKILL); // ends what is left
}

} // namespace
