// Calls that send a request: the lock, stale and late replies, withdrawal.
#include "client/unanswered.h"
#include "queue_fixture.h"

#include <csignal>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace
{

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
    EXPECT_EQ(failure.details().dump(), R"({"withdrawn":false,"sent":false})");
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
