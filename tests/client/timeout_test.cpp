// Calls that are given up when their time is up: what becomes of the request, and why the daemon
// did not answer.
#include "queue_fixture.h"

#include <memory>

namespace
{

class Timeout : public Queue
{
};

TEST_F(Timeout, ALateCallIsKilledAndItsRequestWithdrawn)
{
    send("x");
    take_one();
    const Failure failure = failure_of(entering("a"), {.timeout = 0.3});
    EXPECT_EQ(failure.status(), Exit::no_answer);
    EXPECT_STREQ(failure.what(), "the AT daemon did not answer call (request 12) within 0.3 s; "
                                 "the daemon had not picked up the request; it was withdrawn");
    EXPECT_EQ(failure.details().dump(), R"({"withdrawn":true,"sent":true})");
    EXPECT_EQ(letters(), "");
}

TEST_F(Timeout, ATakenRequestIsReportedAsTaken)
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
    EXPECT_EQ(failure.details().dump(), R"({"withdrawn":false,"sent":true})");
}

TEST_F(Timeout, AnAnswerThatTheCallDidNotPassOnIsReported)
{
    const Child daemon([this] {
        take_one();
        reply(0);
        pause();
    });
    Call slow = entering("a");
    slow.body = [answered = slow.body](Json &output) {
        answered(output);
        return pause();
    };
    const Failure failure = failure_of(slow, {.timeout = 0.3});
    EXPECT_EQ(failure.status(), Exit::no_answer);
    EXPECT_STREQ(failure.what(), "the AT daemon has answered call (request 12), but the call did "
                                 "not end within 0.3 s; its result is not known");
    EXPECT_EQ(failure.details().dump(), R"({"withdrawn":false,"sent":true})");
}

// Records of another program that no caller ever takes.
TEST_F(Timeout, RepliesThatKeepTheDaemonFromAnsweringAreNamed)
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
    EXPECT_EQ(failure.hint(), "'cmifctl doctor --fix' removes them.");
}

TEST_F(Timeout, AFullRequestQueueIsNamed)
{
    cmif_msg other{};
    other.mod_id = CMIF_AT_CHANGE_PIN;
    while (msgsnd(queue_, &other, CMIF_AT_PAYLOAD, IPC_NOWAIT) == 0) {}
    const Failure failure = failure_of(entering("a"), {.timeout = 0.3});
    EXPECT_STREQ(failure.what(), "the AT daemon did not answer call (request 12) within 0.3 s; "
                                 "nothing was sent; its request queue is full");
    EXPECT_EQ(failure.details().dump(), R"({"withdrawn":false,"sent":false})");
}

// The first caller was killed; the kernel gives only the oldest request of a code back.
TEST_F(Timeout, ARequestAfterOneOfAKilledCallerIsNotReportedAsTaken)
{
    send("x");
    const Failure failure = failure_of(entering("a"), {.timeout = 0.3});
    EXPECT_NE(std::string(failure.what()).find("still waits behind another one of its code"),
              std::string::npos)
        << failure.what();
    EXPECT_EQ(failure.details().dump(), R"({"withdrawn":false,"sent":true})");
    EXPECT_EQ(letters(), "xa");
}

} // namespace
