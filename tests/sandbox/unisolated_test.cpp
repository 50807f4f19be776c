// The sandbox without namespaces: runs that share the machine's queues, one at a time.
#include "tests/support/sandbox_fixture.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace
{

namespace fs = std::filesystem;
using sandbox::run_in_sandbox;
using sandbox::shares_namespaces;

constexpr const char *notice = "cmif-sim: no namespaces (CMIF_SANDBOX=none): "
                               "sharing this system's queues, one run at a time\n";

void remove_queue(key_t key)
{
    msgctl(msgget(key, 0), IPC_RMID, nullptr);
}

// What these runs share is here what the launcher gave this test.
class UnisolatedSandbox : public Sandbox
{
protected:
    void SetUp() override
    {
        Sandbox::SetUp();
        setenv("CMIF_SANDBOX", "none", 1);
    }

    // The result; `said_` receives what it printed on standard error.
    int run(const std::function<int()> &inside)
    {
        testing::internal::CaptureStderr();
        const int status = run_in_sandbox(inside);
        said_ = testing::internal::GetCapturedStderr();
        return status;
    }

    std::string said_;
};

TEST_F(UnisolatedSandbox, PrintsOneLine)
{
    ASSERT_TRUE(make_queue(foreign_queue));
    touch("/tmp/outside");
    EXPECT_EQ(run([] { return has_queue(foreign_queue) && fs::exists("/tmp/outside") ? 9 : 1; }),
              9);
    EXPECT_EQ(said_, notice);
}

TEST_F(UnisolatedSandbox, ReturnsTheSignal)
{
    EXPECT_EQ(run([] { return raise(SIGKILL); }), 128 + SIGKILL);
}

TEST_F(UnisolatedSandbox, RemovesTheQueuesAndFilesOfTheRun)
{
    ASSERT_TRUE(make_queue(foreign_queue));
    const std::string files[] = {"/tmp/lte_qmi_msg_handler_thread_ready",
                                 "/tmp/modify_profile_in_progress", "/tmp/lte_provider_list",
                                 "/data/debug_lte.txt", "/data/debug_lte_2.txt"};
    touch("/data/kept");
    touch("/data/debug_lte_kept.txt");
    EXPECT_EQ(run([&] {
                  for (const key_t key : {899, 900, 1158, 1159})
                      make_queue(key);
                  for (const std::string &path : files)
                      touch(path);
                  fs::create_directories("/data/debug_lte_1.txt/folder");
                  return 0;
              }),
              0);
    EXPECT_FALSE(fs::exists("/data/debug_lte_1.txt"));
    for (const key_t key : {899, 900, 1158, 1159})
        EXPECT_FALSE(has_queue(key)) << key;
    for (const std::string &path : files)
        EXPECT_FALSE(fs::exists(path)) << path;
    EXPECT_TRUE(has_queue(foreign_queue));
    EXPECT_TRUE(fs::exists("/data/kept"));
    EXPECT_TRUE(fs::exists("/data/debug_lte_kept.txt"));
}

TEST_F(UnisolatedSandbox, RefusesQueuesThatAreInUse)
{
    ASSERT_TRUE(make_queue(request_queue));
    EXPECT_EQ(run([] { return 0; }), 1);
    EXPECT_EQ(said_, std::string(notice) +
                         "cmif-sim: already in use: queue 899; end the program that uses it, "
                         "or remove what it left: ipcrm -Q 899\n");
    EXPECT_TRUE(has_queue(request_queue));
    remove_queue(request_queue);
    EXPECT_EQ(run([] { return 0; }), 0);
}

TEST_F(UnisolatedSandbox, RefusesFilesThatAreInUse)
{
    touch("/tmp/lte_provider_list");
    touch("/data/debug_lte.txt");
    EXPECT_EQ(run([] { return 0; }), 1);
    EXPECT_EQ(said_, std::string(notice) +
                         "cmif-sim: already in use: /tmp/lte_provider_list, "
                         "/data/debug_lte.txt; end the program that uses it, or remove what it "
                         "left: rm /tmp/lte_provider_list; rm /data/debug_lte.txt\n");
    EXPECT_TRUE(fs::exists("/tmp/lte_provider_list"));
}

// To a plain user all that another one created is in use, even if its permissions hide it.
TEST_F(UnisolatedSandbox, RefusesQueuesThatItMayNotUse)
{
    ASSERT_TRUE(make_queue(request_queue));
    if (geteuid() != 0)
        GTEST_SKIP() << "there is only one user here";
    const pid_t user = fork();
    if (user == 0) {
        constexpr uid_t plain_user = 65534;
        if (setresgid(plain_user, plain_user, plain_user) != 0 ||
            setresuid(plain_user, plain_user, plain_user) != 0)
            std::_Exit(77);
        std::_Exit(
            run([] { return 0; }) == 1 && said_.find(": queue 899;") != std::string::npos ? 0 : 2);
    }
    int status = 0;
    waitpid(user, &status, 0);
    EXPECT_TRUE(WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == 77) << status;
}

TEST_F(UnisolatedSandbox, ReportsALockThatCanNotBeOpened)
{
    fs::remove("/tmp/cmif-sim-run.lock");
    fs::create_symlink("/etc/passwd", "/tmp/cmif-sim-run.lock");
    EXPECT_EQ(run([] { return 0; }), 1);
    EXPECT_EQ(said_, std::string(notice) + "cmif-sim: open /tmp/cmif-sim-run.lock: Too many levels "
                                           "of symbolic links\n");
}

TEST_F(UnisolatedSandbox, LetsEveryUserTakeTheLock)
{
    fs::remove("/tmp/cmif-sim-run.lock");
    umask(077);
    EXPECT_EQ(run([] { return 0; }), 0);
    struct stat lock = {};
    ASSERT_EQ(stat("/tmp/cmif-sim-run.lock", &lock), 0);
    EXPECT_EQ(lock.st_mode & 0777U, 0666U);
}

TEST_F(UnisolatedSandbox, RunsOneAfterTheOther)
{
    LifetimePipe pipe;
    for (const char name : {'a', 'b', 'c'})
        if (fork() == 0)
            std::_Exit(run_in_sandbox([&pipe, name] {
                pipe.put(name);
                usleep(50'000);
                pipe.put(name);
                return 0;
            }));
    while (wait(nullptr) != -1)
        continue;
    const std::string marks = pipe.rest();
    ASSERT_EQ(marks.size(), 6U);
    for (std::size_t i = 0; i < marks.size(); i += 2)
        EXPECT_EQ(marks[i], marks[i + 1]) << marks;
}

// A signal with a handler interrupts the wait for the lock.
TEST_F(UnisolatedSandbox, KeepsWaitingForTheLockAfterASignal)
{
    struct sigaction ignore = {};
    ignore.sa_handler = [](int) {};
    ASSERT_EQ(sigaction(SIGALRM, &ignore, nullptr), 0); // without SA_RESTART
    LifetimePipe first, second;
    const pid_t holder = fork();
    if (holder == 0)
        std::_Exit(run_in_sandbox([&] {
            first.put('a');
            return pause();
        }));
    ASSERT_EQ(first.next(), 'a');
    const pid_t waiting = fork();
    if (waiting == 0)
        std::_Exit(run_in_sandbox([&] {
            second.put('b');
            return 5;
        }));
    const std::string children =
        "/proc/" + std::to_string(waiting) + "/task/" + std::to_string(waiting) + "/children";
    pid_t init = 0;
    while (!(std::ifstream(children) >> init))
        usleep(1000);
    usleep(100'000); // until it waits
    EXPECT_EQ(kill(init, SIGALRM), 0);
    usleep(100'000);
    EXPECT_EQ(kill(holder, SIGKILL), 0);
    int status = 0;
    EXPECT_EQ(waitpid(waiting, &status, 0), waiting);
    EXPECT_EQ(WEXITSTATUS(status), 5);
    EXPECT_EQ(second.rest(), "b");
    waitpid(holder, nullptr, 0);
}

TEST_F(UnisolatedSandbox, CanBeNestedWithoutWaiting)
{
    EXPECT_EQ(run([] { return run_in_sandbox([] { return make_queue(request_queue) ? 5 : 1; }); }),
              5);
    EXPECT_EQ(said_, notice);
    EXPECT_FALSE(has_queue(request_queue));
}

TEST_F(UnisolatedSandbox, KillsProcessesThatAreLeft)
{
    LifetimePipe pipe;
    EXPECT_EQ(run([&] {
                  start_daemon();
                  pipe.put('x');
                  return 0;
              }),
              0);
    EXPECT_EQ(pipe.rest(), "x");
}

TEST_F(UnisolatedSandbox, EndsWithItsCallerAndStillCleansUp)
{
    LifetimePipe pipe;
    const pid_t caller = fork();
    if (caller == 0)
        std::_Exit(run_in_sandbox([&] {
            make_queue(request_queue);
            pipe.put('x');
            return pause();
        }));
    EXPECT_EQ(pipe.next(), 'x');
    EXPECT_EQ(kill(caller, SIGKILL), 0);
    waitpid(caller, nullptr, 0);
    EXPECT_EQ(pipe.rest(), "");
    EXPECT_EQ(run([] { return 0; }), 0) << said_; // waits for the lock, finds nothing in use
}

// From here on the kernel refuses this process namespaces, as in a restricted container.
bool refuse_namespaces()
{
    struct sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_clone, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(struct seccomp_data, args)),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, CLONE_NEWNS, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const struct sock_fprog program = {std::size(rules), rules};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

TEST_F(UnisolatedSandbox, IsUsedWhereTheSystemRefusesNamespaces)
{
    unsetenv("CMIF_SANDBOX");
    ASSERT_TRUE(make_queue(foreign_queue));
    ASSERT_TRUE(refuse_namespaces());
    EXPECT_FALSE(shares_namespaces());
    EXPECT_EQ(run([] { return has_queue(foreign_queue) && shares_namespaces() ? 9 : 1; }), 9);
    EXPECT_EQ(said_, "cmif-sim: no namespaces (Operation not permitted): "
                     "sharing this system's queues, one run at a time\n");
}

} // namespace
