// The sandbox without name spaces: runs that share what is there, one at a time.
#include "tests/support/sandbox_fixture.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace
{

namespace fs = std::filesystem;
using sim::run_in_sandbox;

constexpr const char *shared_line = "cmif-sandbox: no name spaces (CMIF_SANDBOX=none): "
                                    "sharing this system's queues, one run at a time\n";

void remove_queue(key_t key)
{
    msgctl(msgget(key, 0), IPC_RMID, nullptr);
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
