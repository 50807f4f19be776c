#include "sandbox.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/msg.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;
using sim::run_in_sandbox;

constexpr key_t request_queue = 899;
constexpr key_t some_queue = 4242; // none that the sandbox knows
constexpr const char *shared_line = "cmif-sandbox: no name spaces (CMIF_SANDBOX=none): "
                                    "sharing this system's queues, one run at a time\n";

bool has_queue(key_t key)
{
    return msgget(key, 0) != -1;
}

bool make_queue(key_t key)
{
    return msgget(key, IPC_CREAT | 0600) != -1;
}

void remove_queue(key_t key)
{
    msgctl(msgget(key, 0), IPC_RMID, nullptr);
}

void touch(const fs::path &path)
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
void leave_daemon_behind()
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

/* Runs that share what is there; here that is what the launcher gave this test. */
class SharedSandbox : public Sandbox
{
protected:
    void SetUp() override
    {
        Sandbox::SetUp();
        setenv("CMIF_SANDBOX", "none", 1);
    }

    /* The result, and in `said_` what it printed on standard error. */
    int run(const std::function<int()> &inside)
    {
        testing::internal::CaptureStderr();
        const int status = run_in_sandbox(inside);
        said_ = testing::internal::GetCapturedStderr();
        return status;
    }

    std::string said_;
};

TEST_F(SharedSandbox, SaysSoInOneLine)
{
    ASSERT_TRUE(make_queue(some_queue));
    touch("/tmp/outside");
    EXPECT_EQ(run([] { return has_queue(some_queue) && fs::exists("/tmp/outside") ? 9 : 1; }), 9);
    EXPECT_EQ(said_, shared_line);
}

TEST_F(SharedSandbox, PassesSignalsOn)
{
    EXPECT_EQ(run([] { return raise(SIGKILL); }), 128 + SIGKILL);
}

TEST_F(SharedSandbox, RemovesTheQueuesAndMarkersOfTheRun)
{
    ASSERT_TRUE(make_queue(some_queue));
    const std::string markers[] = {"/tmp/lte_qmi_msg_handler_thread_ready",
                                   "/tmp/modify_profile_in_progress", "/tmp/lte_provider_list",
                                   "/data/debug_lte.txt", "/data/debug_lte_old.txt"};
    touch("/data/kept");
    EXPECT_EQ(run([&] {
                  for (const key_t key : {899, 900, 1158, 1159})
                      make_queue(key);
                  for (const std::string &path : markers)
                      touch(path);
                  fs::create_directories("/data/debug_lte_1.txt/folder");
                  return 0;
              }),
              0);
    EXPECT_FALSE(fs::exists("/data/debug_lte_1.txt"));
    for (const key_t key : {899, 900, 1158, 1159})
        EXPECT_FALSE(has_queue(key)) << key;
    for (const std::string &path : markers)
        EXPECT_FALSE(fs::exists(path)) << path;
    EXPECT_TRUE(has_queue(some_queue));
    EXPECT_TRUE(fs::exists("/data/kept"));
}

TEST_F(SharedSandbox, RefusesQueuesThatAreInUse)
{
    ASSERT_TRUE(make_queue(request_queue));
    EXPECT_EQ(run([] { return 0; }), 1);
    EXPECT_EQ(said_, std::string(shared_line) +
                         "cmif-sandbox: already in use here: queue 899 - end what uses it, "
                         "or remove what it left: ipcrm -Q 899\n");
    EXPECT_TRUE(has_queue(request_queue));
    remove_queue(request_queue);
    EXPECT_EQ(run([] { return 0; }), 0);
}

TEST_F(SharedSandbox, RefusesMarkersThatAreInUse)
{
    touch("/tmp/lte_provider_list");
    touch("/data/debug_lte.txt");
    EXPECT_EQ(run([] { return 0; }), 1);
    EXPECT_EQ(said_, std::string(shared_line) +
                         "cmif-sandbox: already in use here: /tmp/lte_provider_list, "
                         "/data/debug_lte.txt - end what uses it, or remove what it left: "
                         "rm /tmp/lte_provider_list; rm /data/debug_lte.txt\n");
    EXPECT_TRUE(fs::exists("/tmp/lte_provider_list"));
}

TEST_F(SharedSandbox, RunsOneAfterTheOther)
{
    Trail trail;
    for (const char name : {'a', 'b', 'c'})
        if (fork() == 0)
            std::_Exit(run_in_sandbox([&trail, name] {
                trail.leave(name);
                usleep(50'000);
                trail.leave(name);
                return 0;
            }));
    while (wait(nullptr) != -1)
        continue;
    const std::string marks = trail.rest();
    ASSERT_EQ(marks.size(), 6U);
    for (std::size_t i = 0; i < marks.size(); i += 2)
        EXPECT_EQ(marks[i], marks[i + 1]) << marks;
}

TEST_F(SharedSandbox, NeedsNoSecondTurnWithinItself)
{
    EXPECT_EQ(run([] { return run_in_sandbox([] { return make_queue(request_queue) ? 5 : 1; }); }),
              5);
    EXPECT_EQ(said_, shared_line);
    EXPECT_FALSE(has_queue(request_queue));
}

TEST_F(SharedSandbox, EndsWhatIsLeftOver)
{
    Trail trail;
    EXPECT_EQ(run([&] {
                  leave_daemon_behind();
                  trail.leave('x');
                  return 0;
              }),
              0);
    EXPECT_EQ(trail.rest(), "x");
}

TEST_F(SharedSandbox, EndsWithItsCallerAndCleansUpAllTheSame)
{
    Trail trail;
    const pid_t caller = fork();
    if (caller == 0)
        std::_Exit(run_in_sandbox([&] {
            make_queue(request_queue);
            trail.leave('x');
            return pause();
        }));
    EXPECT_EQ(trail.next(), 'x');
    EXPECT_EQ(kill(caller, SIGKILL), 0);
    waitpid(caller, nullptr, 0);
    EXPECT_EQ(trail.rest(), "");
    EXPECT_EQ(run([] { return 0; }), 0) << said_; // waits for its turn, finds nothing in use
}

/* From here on the kernel answers this process as it does in a container that may do little. */
bool refuse_name_spaces()
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

TEST_F(SharedSandbox, IsTheWayOutWhereTheSystemRefuses)
{
    unsetenv("CMIF_SANDBOX");
    ASSERT_TRUE(make_queue(some_queue));
    ASSERT_TRUE(refuse_name_spaces());
    EXPECT_EQ(run([] { return has_queue(some_queue) ? 9 : 1; }), 9);
    EXPECT_EQ(said_, "cmif-sandbox: no name spaces (Operation not permitted): "
                     "sharing this system's queues, one run at a time\n");
}

} // namespace
