// The replies that are still to come, and how they are forgotten.
#include "records.h"
#include "tests/support/child.h"

#include <csignal>
#include <memory>
#include <unistd.h>

namespace
{

TEST(Unanswered, AreCountedForAllProcesses)
{
    Unanswered mine;
    EXPECT_EQ(mine.count(enter_pin), 0);
    Child([] { Unanswered().add(enter_pin); }).wait();
    EXPECT_EQ(mine.count(enter_pin), 1);
    EXPECT_LT(mine.age(enter_pin), 60);
    EXPECT_EQ(mine.count({Channel::qmi, 12}), 0);
    mine.remove(enter_pin, 5);
    EXPECT_EQ(mine.count(enter_pin), 0);
}

TEST(Unanswered, AreKeptWhileTheDaemonLives)
{
    put(request_queue(), 12, "a");
    Child daemon([] {
        take_one();
        pause();
    });
    while (client::peek(request_queue(), [](long, std::string_view) {}) &&
           !letters(request_queue()).empty())
        usleep(1000);
    Unanswered replies;
    replies.add(enter_pin);
    replies.forget_lost(enter_pin);
    EXPECT_EQ(replies.count(enter_pin), 1);
    EXPECT_TRUE(replies.is_awaited(enter_pin));
    daemon.signal(SIGKILL);
    daemon.wait();
    EXPECT_FALSE(replies.is_awaited(enter_pin));
    replies.forget_lost(enter_pin);
    EXPECT_EQ(replies.count(enter_pin), 0);
}

TEST(Unanswered, AreForgottenWithTheirQueue)
{
    request_queue();
    Unanswered replies;
    replies.add(enter_pin);
    replies.forget_lost(enter_pin);
    EXPECT_EQ(replies.count(enter_pin), 1);
    msgctl(request_queue(), IPC_RMID, nullptr);
    request_queue();
    replies.forget_lost(enter_pin);
    EXPECT_EQ(replies.count(enter_pin), 0);
}

// A withdrawal makes its caller the queue's last receiver, and callers end soon.
void withdraw_in_a_caller_that_ends()
{
    Child([] {
        Unanswered().note_withdrawal(Channel::at);
        put(request_queue(), 12, "a");
        take_one();
    }).wait();
}

TEST(Unanswered, AreNotForgottenAfterAWithdrawal)
{
    request_queue();
    Unanswered replies;
    withdraw_in_a_caller_that_ends();
    replies.add(enter_pin);
    replies.forget_lost(enter_pin);
    EXPECT_EQ(replies.count(enter_pin), 1);
}

// The next one is noted, and has not taken anything yet.
TEST(Unanswered, AreNotForgottenBetweenTwoWithdrawals)
{
    request_queue();
    Unanswered replies;
    withdraw_in_a_caller_that_ends();
    replies.note_withdrawal(Channel::at);
    replies.add(enter_pin);
    replies.forget_lost(enter_pin);
    EXPECT_EQ(replies.count(enter_pin), 1);
}

TEST(Queues, AreLookedAtWithoutTakingAnything)
{
    put(request_queue(), 12, "a");
    put(request_queue(), 9, "b", 1000);
    EXPECT_EQ(letters(request_queue()), "ab");
    EXPECT_EQ(letters(request_queue()), "ab");
}

TEST(Queues, LoseTheStaleRepliesOfOneCodeOfAnySize)
{
    put(reply_queue(), 12, "a");
    put(reply_queue(), 12, "b", 1000);
    put(reply_queue(), 12, "c", 1);
    put(reply_queue(), 9, "d");
    EXPECT_EQ(client::clear_replies(enter_pin), 3);
    EXPECT_EQ(letters(reply_queue()), "d");
}

TEST(Queues, AreNotCreatedByALook)
{
    EXPECT_FALSE(client::queue_exists(Channel::at));
    EXPECT_EQ(client::clear_replies(enter_pin), 0);
    EXPECT_EQ(msgget(CMIF_AT_REPLY_KEY, 0), -1);
}

} // namespace
