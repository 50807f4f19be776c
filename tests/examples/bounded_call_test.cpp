// examples/bounded_call.c, with calls that wait for the test instead of a daemon. Without a queue,
// a request that isn't answered counts as taken.
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/ipc.h>
#include <sys/msg.h>
#include <sys/prctl.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

extern "C" {
#include "cmif/cmif.h"
#include "examples/bounded_call.h"
}

#include <gtest/gtest.h>

namespace
{

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int code = CMIF_AT_GET_PIN_COUNTERS;

int answer(void *value)
{
    *static_cast<int *>(value) += 1;
    return 7;
}

int never_answer(void *)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL); // ends with the test
    for (;;)
        pause();
}

struct RequestQueue {
    const int id = msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0600);
    RequestQueue() { EXPECT_NE(id, -1); }
    ~RequestQueue() { msgctl(id, IPC_RMID, nullptr); }
    void fill() const
    {
        const cmif_msg other{code + 1, "", "", "", "", 0};
        while (msgsnd(id, &other, CMIF_AT_PAYLOAD, IPC_NOWAIT) == 0) {}
        EXPECT_EQ(errno, EAGAIN);
    }
    bool take(long type, int flags) const
    {
        cmif_msg record;
        return msgrcv(id, &record, CMIF_AT_PAYLOAD, type, flags) == CMIF_AT_PAYLOAD;
    }
};

int send_and_never_answer(void *)
{
    const cmif_msg record{code, "", "", "", "", 0};
    msgsnd(msgget(CMIF_AT_REQUEST_KEY, 0), &record, CMIF_AT_PAYLOAD, 0);
    return never_answer(nullptr);
}

outcome make_request(int seconds, int (*call)(void *))
{
    int value = 0;
    request made{CMIF_AT_REQUEST_KEY, code, call, &value, sizeof value, 0};
    return request_within(seconds, &made);
}

class Timer
{
public:
    milliseconds passed() const
    {
        return std::chrono::duration_cast<milliseconds>(steady_clock::now() - start_);
    }

private:
    const steady_clock::time_point start_ = steady_clock::now();
};

struct Pipe {
    int ends[2];
    Pipe() { EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0); }
    // 1, or 0 when every writer has ended.
    ssize_t receive() const
    {
        char byte;
        return read(ends[0], &byte, 1);
    }
    void send() const { EXPECT_EQ(write(ends[1], "x", 1), 1); }
};

TEST(BoundedCall, GivesTheAnswer)
{
    int value = 41;
    request made{CMIF_AT_REQUEST_KEY, code, answer, &value, sizeof value, 0};
    EXPECT_EQ(request_within(10, &made), ANSWERED);
    EXPECT_EQ(made.result, 7);
    EXPECT_EQ(value, 42);
}

// Another request has the lock for 2 of the 4 seconds.
TEST(BoundedCall, HasOneLimitForLockAndCall)
{
    const Pipe started;
    const pid_t other = fork();
    if (other == 0) {
        static const Pipe *report;
        report = &started;
        make_request(10, [](void *) {
            report->send();
            return static_cast<int>(sleep(2));
        });
        _exit(0);
    }
    ASSERT_EQ(started.receive(), 1);

    const Timer timer;
    EXPECT_EQ(make_request(4, never_answer), PENDING);
    EXPECT_GE(timer.passed(), milliseconds(3900));
    EXPECT_LT(timer.passed(), milliseconds(5500)); // 6 s with a limit for each
    EXPECT_EQ(waitpid(other, nullptr, 0), other);
}

TEST(BoundedCall, IsBusyWhileAnEarlierRequestIsNotAnswered)
{
    EXPECT_EQ(make_request(1, never_answer), PENDING);
    const Timer timer;
    EXPECT_EQ(make_request(1, answer), BUSY);
    EXPECT_GE(timer.passed(), milliseconds(990));
}

TEST(BoundedCall, WithdrawsARequestThatIsStillInTheQueue)
{
    const RequestQueue queue;
    EXPECT_EQ(make_request(1, send_and_never_answer), WITHDRAWN);
    EXPECT_FALSE(queue.take(code, IPC_NOWAIT));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1); // the child has been killed
}

TEST(BoundedCall, LeavesAChildThatSendsItsRequestWhenTheQueueHasRoom)
{
    const RequestQueue queue;
    queue.fill();
    EXPECT_EQ(make_request(1, send_and_never_answer), PENDING);
    EXPECT_FALSE(queue.take(code, IPC_NOWAIT));
    ASSERT_TRUE(queue.take(code + 1, IPC_NOWAIT));
    EXPECT_TRUE(queue.take(code, 0));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), 0); // the child still waits for the reply
}

TEST(BoundedCall, FailsAtOnceWhenTheCallCrashes)
{
    const Timer timer;
    EXPECT_EQ(make_request(10, [](void *) -> int { abort(); }), FAILED);
    EXPECT_LT(timer.passed(), milliseconds(5000));
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1); // no child is left
}

volatile sig_atomic_t signals;

// With a limit that begins again at each signal the call would not return.
TEST(BoundedCall, GoesOnAfterASignalWithTheTimeThatIsLeft)
{
    struct sigaction action = {};
    action.sa_handler = [](int) {
        signals = signals + 1;
        if (signals == 200)
            _exit(1);
    };
    sigaction(SIGALRM, &action, nullptr);
    const itimerval often{{0, 100'000}, {0, 100'000}};
    setitimer(ITIMER_REAL, &often, nullptr);

    const Timer timer;
    EXPECT_EQ(make_request(2, never_answer), PENDING);
    EXPECT_GE(timer.passed(), milliseconds(1990));
    const itimerval off{};
    setitimer(ITIMER_REAL, &off, nullptr);
    EXPECT_GT(signals, 1);
}

// As `timeout` and a terminal end them.
TEST(BoundedCall, LeavesItsChildRunningWhenTheCallersGroupIsEnded)
{
    static const Pipe started, go, finished;
    const pid_t caller = fork();
    if (caller == 0) {
        setpgid(0, 0);
        make_request(60, [](void *) {
            close(go.ends[1]);
            started.send();
            go.receive();
            finished.send();
            return 0;
        });
        _exit(0);
    }
    ASSERT_EQ(started.receive(), 1);
    ASSERT_EQ(kill(-caller, SIGKILL), 0);
    ASSERT_EQ(waitpid(caller, nullptr, 0), caller);
    go.send();
    close(finished.ends[1]);
    EXPECT_EQ(finished.receive(), 1);
}

// The lock file of a user who lets no other one open it; root may open any file.
TEST(BoundedCall, ReportsThatTheLockBelongsToAnotherUser)
{
    const std::string path = "/tmp/cmif-request-" + std::to_string(CMIF_AT_REQUEST_KEY) + "-" +
                             std::to_string(code) + ".lock";
    unlink(path.c_str());
    const int lock = open(path.c_str(), O_CREAT | O_EXCL | O_CLOEXEC, 0);
    ASSERT_NE(lock, -1);
    close(lock);
    const pid_t other = fork();
    if (other == 0) {
        if (geteuid() == 0 && setuid(65534) != 0)
            _exit(100);
        _exit(make_request(1, answer));
    }
    int status = 0;
    ASSERT_EQ(waitpid(other, &status, 0), other);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), OTHER_USER);
    unlink(path.c_str());
}

} // namespace
