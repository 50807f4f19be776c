// What a call has sent: known as its caller sent it, counted, and taken back alone.
#include "client/code_lock.h"
#include "records.h"
#include "tests/support/child.h"

#include <csignal>
#include <memory>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

// Sends as a call does, in a child that is watched.
class Sent : public testing::Test
{
protected:
    void send(const char *text)
    {
        Child([&] {
            record.watch({enter_pin}, &replies);
            put(request_queue(), 12, text);
        }).wait();
    }

    SentRecord record;
    Unanswered replies;
};

TEST_F(Sent, IsWhatTheLibrarySent)
{
    send("1234");
    EXPECT_EQ(record.state(), SentRecord::State::sent);
    EXPECT_EQ(record.queue(), request_queue());
    EXPECT_EQ(record.size(), 116U);
    EXPECT_STREQ(record.payload(), "1234");
    EXPECT_EQ(replies.count(enter_pin), 1);
}

TEST_F(Sent, LeavesNothingToComeOnceItIsAnswered)
{
    put(reply_queue(), 12, "");
    Child([&] {
        record.watch({enter_pin}, &replies);
        put(request_queue(), 12, "1234");
        Message message{};
        msgrcv(reply_queue(), &message, sizeof message.payload, 12, 0);
    }).wait();
    EXPECT_EQ(record.state(), SentRecord::State::answered);
    EXPECT_EQ(replies.count(enter_pin), 0);
}

// The hooks of the call see nothing of it, as when it is killed while the kernel hands it the
// reply.
TEST_F(Sent, LeavesNothingToComeWhenItsCallerIsKilledWithTheReply)
{
    Child caller([&] {
        record.watch({enter_pin}, &replies);
        put(request_queue(), 12, "1234");
        Message message{};
        syscall(SYS_msgrcv, reply_queue(), &message, sizeof message.payload, 12, 0);
        pause();
    });
    take_one();
    put(reply_queue(), 12, "");
    while (!letters(reply_queue()).empty())
        usleep(1000);
    caller.signal(SIGKILL);
    caller.wait();
    EXPECT_EQ(replies.count(enter_pin), 1);
    EXPECT_EQ(withdraw(enter_pin, record, replies), Withdrawal::answered);
    EXPECT_EQ(replies.count(enter_pin), 0);
}

// The last reader of the reply queue is the caller, which has taken the first reply only.
TEST_F(Sent, LeavesASecondReplyToComeAfterTheFirst)
{
    constexpr RequestCode change_pin{Channel::at, 13};
    put(reply_queue(), 12, "");
    Child([&] {
        record.watch({enter_pin, change_pin}, &replies);
        put(request_queue(), 12, "1234");
        Message message{};
        msgrcv(reply_queue(), &message, sizeof message.payload, 12, 0);
        put(request_queue(), 13, "5678");
    }).wait();
    take_one();
    take_one();
    EXPECT_EQ(withdraw(change_pin, record, replies), Withdrawal::taken);
    EXPECT_EQ(replies.count(change_pin), 1);
}

TEST_F(Sent, LeavesNoCountWhenItsCallerIsKilledBeforeAFullQueue)
{
    msqid_ds state{};
    msgctl(request_queue(), IPC_STAT, &state);
    state.msg_qbytes = 100;
    msgctl(request_queue(), IPC_SET, &state);
    Child child([&] {
        record.watch({enter_pin}, &replies);
        Message message{12, {}};
        msgsnd(request_queue(), &message, CMIF_AT_PAYLOAD, 0);
    });
    EXPECT_TRUE(child.still_runs());
    child.signal(SIGKILL);
    child.wait();
    EXPECT_EQ(record.state(), SentRecord::State::not_sent);
    EXPECT_EQ(replies.count(enter_pin), 0);
    EXPECT_EQ(withdraw(enter_pin, record, replies), Withdrawal::nothing_sent);
}

TEST_F(Sent, IsWithdrawnAloneAndTheRestKeepsItsOrder)
{
    put(request_queue(), 9, "x");
    send("b");
    put(request_queue(), 12, "c");
    put(request_queue(), 9, "y");
    EXPECT_EQ(withdraw(enter_pin, record, replies), Withdrawal::withdrawn);
    EXPECT_EQ(letters(request_queue()), "xcy");
    EXPECT_EQ(replies.count(enter_pin), 0);
}

// The other may have noted the last reader of the queue, and not have taken its request yet.
TEST_F(Sent, IsWithdrawnAfterAnotherWithdrawal)
{
    send("a");
    auto other = std::make_unique<client::WithdrawalLock>(Channel::at);
    Child mine([&] { withdraw(enter_pin, record, replies); });
    EXPECT_TRUE(mine.still_runs());
    EXPECT_EQ(letters(request_queue()), "a");
    other.reset();
    EXPECT_EQ(mine.wait(), 0);
    EXPECT_EQ(letters(request_queue()), "");
}

TEST_F(Sent, IsWithdrawnWhileAnotherWithdrawalIsStopped)
{
    send("a");
    const client::WithdrawalLock other(Channel::at);
    EXPECT_EQ(withdraw(enter_pin, record, replies), Withdrawal::withdrawn);
}

TEST_F(Sent, IsLeftAfterAnotherRequestOfTheSameCode)
{
    put(request_queue(), 12, "a");
    send("b");
    EXPECT_EQ(withdraw(enter_pin, record, replies), Withdrawal::kept);
    EXPECT_EQ(letters(request_queue()), "ab");
    EXPECT_EQ(replies.count(enter_pin), 1);
}

TEST_F(Sent, IsTakenWhenTheDaemonWasQuicker)
{
    send("a");
    take_one();
    EXPECT_EQ(withdraw(enter_pin, record, replies), Withdrawal::taken);
    EXPECT_EQ(replies.count(enter_pin), 1);
}

TEST_F(Sent, IsGoneWithItsQueue)
{
    send("a");
    msgctl(request_queue(), IPC_RMID, nullptr);
    EXPECT_EQ(withdraw(enter_pin, record, replies), Withdrawal::queue_gone);
}

} // namespace
