// Calls that send a request: the lock, stale and late replies, withdrawal.
#include "client/call.h"
#include "client/request.h"
#include "client/unanswered.h"
#include "cmif/cmif.h"
#include "tests/support/child.h"
#include "tests/support/client_calls.h"

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/msg.h>
#include <unistd.h>
#include <utility>

namespace
{

using namespace client;

// The request queue of the AT daemon, and a call that sends on it what the library would send.
class Queue : public testing::Test
{
protected:
    void SetUp() override
    {
        queue_ = msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0666);
        ASSERT_NE(queue_, -1);
    }

    void send(const char *letter) const
    {
        const cmif_msg record = [letter] {
            cmif_msg filled{};
            filled.mod_id = CMIF_AT_ENTER_PIN;
            filled.set_string[0] = *letter;
            return filled;
        }();
        ASSERT_EQ(msgsnd(queue_, &record, CMIF_AT_PAYLOAD, 0), 0);
    }

    // As the library waits: forever, whatever happens.
    static int wait_for_reply()
    {
        const int replies = msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
        cmif_msg record{};
        while (msgrcv(replies, &record, CMIF_AT_PAYLOAD, CMIF_AT_ENTER_PIN, 0) == -1)
            continue;
        return record.ret_code;
    }

    // Sends a reply, as the daemon does.
    static void reply(int ret_code)
    {
        cmif_msg record{};
        record.mod_id = CMIF_AT_ENTER_PIN;
        record.ret_code = ret_code;
        const int replies = msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
        ASSERT_EQ(msgsnd(replies, &record, CMIF_AT_PAYLOAD, 0), 0);
    }

    void take_one() const
    {
        cmif_msg record{};
        ASSERT_NE(msgrcv(queue_, &record, CMIF_AT_PAYLOAD, 0, 0), -1);
    }

    Call entering(const char *letter) const
    {
        return {.request = enter_pin, .body = [this, letter](Json &) {
                    send(letter);
                    return wait_for_reply();
                }};
    }

    // Empties the queue. The first letter of each message, in order.
    std::string letters() const
    {
        cmif_msg record{};
        std::string all;
        while (msgrcv(queue_, &record, CMIF_AT_PAYLOAD, 0, IPC_NOWAIT) != -1)
            all += record.set_string[0];
        return all;
    }

    static constexpr Request enter_pin = at_request("call", CMIF_AT_ENTER_PIN);
    int queue_ = -1;
};

TEST_F(Queue, ALateCallIsKilledAndItsRequestWithdrawn)
{
    send("x");
    take_one();
    const Failure failure = failure_of(entering("a"), {.timeout = 0.3});
    EXPECT_EQ(failure.status(), Exit::no_answer);
    EXPECT_STREQ(failure.what(), "the AT daemon did not answer call (request 12) within 0.3 s; "
                                 "the daemon had not picked up the request; it was withdrawn");
    EXPECT_EQ(failure.details(), Json::parse(R"({"withdrawn": true, "sent": true})"));
    EXPECT_EQ(letters(), "");
}

TEST_F(Queue, ATakenRequestIsReportedAsTaken)
{
    const std::unique_ptr<Child> daemon = std::make_unique<Child>([this] {
        take_one();
        pause();
    });
    const Failure failure = failure_of(entering("a"), {.timeout = 0.3});
    EXPECT_EQ(failure.status(), Exit::no_answer);
    EXPECT_NE(
        std::string(failure.what()).find("had picked up the request and may still carry it out"),
        std::string::npos);
    EXPECT_EQ(failure.details(), Json::parse(R"({"withdrawn": false, "sent": true})"));
}

// Records of another program that no caller ever takes.
TEST_F(Queue, RepliesThatKeepTheDaemonFromAnsweringAreNamed)
{
    const int replies = msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
    cmif_msg foreign{};
    foreign.mod_id = 4711;
    unsigned long count = 0;
    while (msgsnd(replies, &foreign, CMIF_AT_PAYLOAD, IPC_NOWAIT) == 0)
        ++count;
    Child daemon([this] {
        take_one();
        reply(0);
    });
    const Failure failure = failure_of(entering("a"), {.timeout = 0.3});
    EXPECT_NE(std::string(failure.what())
                  .find("its reply queue is full of " + std::to_string(count) +
                        " replies that no caller takes"),
              std::string::npos)
        << failure.what();
    EXPECT_EQ(failure.hint(), "'cmifctl doctor --fix' takes them away.");
}

TEST_F(Queue, AFullRequestQueueIsNamed)
{
    cmif_msg other{};
    other.mod_id = CMIF_AT_CHANGE_PIN;
    while (msgsnd(queue_, &other, CMIF_AT_PAYLOAD, IPC_NOWAIT) == 0) {}
    const Failure failure = failure_of(entering("a"), {.timeout = 0.3});
    EXPECT_STREQ(failure.what(), "the AT daemon did not answer call (request 12) within 0.3 s; "
                                 "nothing was sent; its request queue is full");
    EXPECT_EQ(failure.details(), Json::parse(R"({"withdrawn": false, "sent": false})"));
}

// The first caller was killed; the kernel gives only the oldest request of a code back.
TEST_F(Queue, ARequestBehindOneOfAKilledCallerIsNotReportedAsTaken)
{
    send("x");
    const Failure failure = failure_of(entering("a"), {.timeout = 0.3});
    EXPECT_NE(std::string(failure.what()).find("still waits behind one of a caller"),
              std::string::npos)
        << failure.what();
    EXPECT_EQ(failure.details(), Json::parse(R"({"withdrawn": false, "sent": true})"));
    EXPECT_EQ(letters(), "xa");
}

TEST_F(Queue, AnInterruptWithdrawsToo)
{
    bool interrupted = false;
    Call waiting = entering("a");
    waiting.on_wait = [&] {
        msqid_ds state{};
        msgctl(queue_, IPC_STAT, &state);
        if (state.msg_qnum > 0 && !std::exchange(interrupted, true))
            kill(getpid(), SIGINT);
    };
    EXPECT_THROW(call({}, waiting), Interrupted);
    EXPECT_EQ(letters(), "");
}

TEST_F(Queue, AStaleReplyIsNotTakenForTheAnswer)
{
    reply(16);
    Child daemon([this] {
        take_one();
        reply(7);
    });
    EXPECT_EQ(call({}, entering("a")).result, 7);
}

// The daemon takes a while over the first request, whose caller gives up. Its answer must not reach
// the second caller.
TEST_F(Queue, ALateReplyIsNotTakenForTheAnswer)
{
    Child daemon([this] {
        take_one();
        usleep(600'000);
        reply(16);
        take_one();
        reply(0);
    });
    EXPECT_EQ(failure_of(entering("a"), {.timeout = 0.2}).status(), Exit::no_answer);
    EXPECT_EQ(call({.timeout = 10}, entering("b")).result, 0);
}

TEST_F(Queue, NothingIsSentWhileAnEarlierReplyIsDue)
{
    Child daemon([this] {
        take_one();
        pause();
    });
    EXPECT_EQ(failure_of(entering("a"), {.timeout = 0.2}).status(), Exit::no_answer);
    const Failure failure = failure_of(entering("b"), {.timeout = 0.2});
    EXPECT_EQ(failure.status(), Exit::no_answer);
    EXPECT_NE(std::string(failure.what()).find("has not answered an earlier call (request 12)"),
              std::string::npos)
        << failure.what();
    EXPECT_EQ(failure.details(), Json::parse(R"({"withdrawn": false, "sent": false})"));
    EXPECT_EQ(letters(), "");
}

TEST_F(Queue, TheReplyOfADaemonThatEndedIsNotWaitedFor)
{
    {
        Child daemon([this] {
            take_one();
            pause();
        });
        EXPECT_EQ(failure_of(entering("a"), {.timeout = 0.2}).status(), Exit::no_answer);
    }
    Child daemon([this] {
        take_one();
        reply(0);
    });
    EXPECT_EQ(call({.timeout = 10}, entering("b")).result, 0);
}

TEST_F(Queue, ASecondCallerWaitsForTheFirst)
{
    Child daemon([this] {
        for (int i = 0; i < 2; ++i) {
            cmif_msg record{};
            msgrcv(queue_, &record, CMIF_AT_PAYLOAD, 0, 0);
            usleep(100'000);
            reply(record.set_string[0]);
        }
    });
    Child other([this] { std::exit(call({}, entering("a")).result); });
    EXPECT_EQ(call({}, entering("b")).result, 'b');
    EXPECT_EQ(other.wait(), 'a');
}

TEST_F(Queue, AKilledCallerLeavesItsRequestAndNothingElse)
{
    Child caller([this] { call({}, entering("a")); });
    for (msqid_ds state{}; state.msg_qnum == 0; usleep(1000))
        ASSERT_EQ(msgctl(queue_, IPC_STAT, &state), 0);
    caller.signal(SIGKILL);
    caller.wait();
    EXPECT_EQ(letters(), "a");
    const CodeLock lock({enter_pin.code}, 1, [] {});
    EXPECT_TRUE(lock.holds(enter_pin.code));
}

TEST_F(Queue, AKilledCallIsWithdrawn)
{
    Child killer([this] {
        msqid_ds state{};
        while (state.msg_qnum == 0)
            msgctl(queue_, IPC_STAT, &state);
        kill(state.msg_lspid, SIGKILL);
    });
    EXPECT_STREQ(failure_of(entering("a"), {.timeout = 10}).what(),
                 "the call call was ended by signal 9");
    EXPECT_EQ(letters(), "");
    EXPECT_EQ(Unanswered().count(enter_pin.code), 0);
}

// The kernel gives a reply to a process that sleeps in the receive, however late that runs again.
TEST_F(Queue, AReplyThatAKilledCallHadReceivedIsCounted)
{
    Child daemon([this] {
        take_one();
        msqid_ds state{};
        msgctl(queue_, IPC_STAT, &state);
        usleep(100'000); // until it sleeps
        reply(0);
        kill(state.msg_lspid, SIGKILL);
        pause();
    });
    failure_of(entering("a"), {.timeout = 10}); // or an answer, if the call was quick
    EXPECT_EQ(Unanswered().count(enter_pin.code), 0);
}

TEST_F(Queue, ALockThatIsHeldAlreadyIsNotTakenAgain)
{
    const CodeLock lock = lock_codes({}, {enter_pin.code});
    Child daemon([this] {
        take_one();
        reply(3);
    });
    EXPECT_EQ(call({.timeout = 5, .lock = &lock}, entering("a")).result, 3);
}

TEST_F(Queue, ARequestWithoutAReplyLeavesNothingToCome)
{
    const Call call_for_download{.request = at_request("call", CMIF_AT_DOWNLOAD_MODE),
                                 .body = [this](Json &) {
                                     cmif_msg record{};
                                     record.mod_id = CMIF_AT_DOWNLOAD_MODE;
                                     return msgsnd(queue_, &record, CMIF_AT_PAYLOAD, 0);
                                 }};
    EXPECT_EQ(call({}, call_for_download).result, 0);
    EXPECT_EQ(Unanswered().count(call_for_download.request.code), 0);
}

} // namespace
