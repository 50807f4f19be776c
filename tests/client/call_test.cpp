// Calls in a child, and the requests that they leave on a queue.
#include "client/call.h"
#include "client/file.h"
#include "client/request.h"
#include "cmif/cmif.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/msg.h>
#include <unistd.h>
#include <utility>

namespace
{

using namespace client;

TEST(Request, LaysOutTheFields)
{
    const Request request =
        at_request("call", 10, {.first = "a", .second = "b", .third = "c", .value = "d"});
    ASSERT_EQ(request.payload.size(), 116U);
    EXPECT_EQ(request.payload[0], 'a');
    EXPECT_EQ(request.payload[30], 'b');
    EXPECT_EQ(request.payload[60], 'c');
    EXPECT_EQ(request.payload[90], 'd');
    EXPECT_EQ(qmi_request("call", 1, 101).payload, std::string(101, '\0'));
}

TEST(Request, RefusesWhatDoesNotFit)
{
    EXPECT_NO_THROW(at_request("call", 1, {.first = std::string(29, '1')}));
    EXPECT_NO_THROW(at_request("call", 1, {.value = std::string(21, '1')}));
    EXPECT_THROW(at_request("call", 1, {.first = std::string(30, '1')}), Failure);
    EXPECT_THROW(at_request("call", 1, {.third = std::string(30, '1')}), Failure);
    EXPECT_THROW(at_request("call", 1, {.value = std::string(22, '1')}), Failure);
}

class Queue : public testing::Test
{
protected:
    void SetUp() override
    {
        queue_ = msgget(CMIF_AT_REQUEST_KEY, IPC_CREAT | 0666);
        ASSERT_NE(queue_, -1);
    }

    void send(const Request &request) const
    {
        struct {
            long type;
            char payload[512];
        } message{request.code, {}};
        std::memcpy(message.payload, request.payload.data(), request.payload.size());
        ASSERT_EQ(msgsnd(queue_, &message, request.payload.size(), IPC_NOWAIT), 0);
    }

    // Empties the queue. The first letter of each message, in order.
    std::string letters() const
    {
        struct {
            long type;
            char payload[512];
        } message{};
        std::string all;
        while (msgrcv(queue_, &message, sizeof message.payload, 0, IPC_NOWAIT) != -1)
            all += message.payload[0];
        return all;
    }

    static Request request(const char *letter, long code = 12)
    {
        return at_request("call", code, {.first = letter});
    }

    int queue_ = -1;
};

TEST_F(Queue, WithdrawsOneRequest)
{
    send(request("a"));
    EXPECT_EQ(withdraw(request("a")), Withdrawal::withdrawn);
    EXPECT_EQ(letters(), "");
}

TEST_F(Queue, KeepsTheOthersInTheirOrder)
{
    for (const char *letter : {"a", "b", "c", "b", "d"})
        send(request(letter));
    EXPECT_EQ(withdraw(request("b")), Withdrawal::withdrawn);
    EXPECT_EQ(letters(), "acbd");
}

TEST_F(Queue, LeavesOtherRequestsAlone)
{
    send(request("a"));
    send(request("b", 9));
    EXPECT_EQ(withdraw(request("b")), Withdrawal::not_queued);
    EXPECT_EQ(withdraw(no_request("getter")), Withdrawal::no_queue);
    EXPECT_EQ(letters(), "ba");
}

TEST_F(Queue, ReportsAFullQueue)
{
    msqid_ds state{};
    ASSERT_EQ(msgctl(queue_, IPC_STAT, &state), 0);
    state.msg_qbytes = 2 * CMIF_AT_PAYLOAD;
    ASSERT_EQ(msgctl(queue_, IPC_SET, &state), 0);
    send(request("a"));
    send(request("a"));
    EXPECT_EQ(withdraw(request("b")), Withdrawal::queue_full);
    EXPECT_EQ(letters(), "aa");
}

TEST(NoQueue, IsNotCreated)
{
    EXPECT_EQ(withdraw(at_request("call", 12)), Withdrawal::no_queue);
    EXPECT_FALSE(queue_exists(Channel::at));
}

// ---- calls in a child ----

Failure failure_of(const Call &failing, const CallOptions &options = {})
{
    try {
        call(options, failing);
    } catch (const Failure &failure) {
        return failure;
    }
    return {Exit::done, "no failure"};
}

TEST(CallInChild, ReturnsResultAndOutput)
{
    const Answer answer = call({}, {.request = no_request("it"), .body = [](Json &output) {
                                        output = {{"bytes", "a\xff"}, {"pid", getpid()}};
                                        return -7;
                                    }});
    EXPECT_EQ(answer.result, -7);
    EXPECT_EQ(answer.output["bytes"], "a\xff");
    EXPECT_NE(answer.output["pid"], getpid());
}

TEST(CallInChild, ReturnsMoreThanAPipeHolds)
{
    const Answer answer = call({}, {.request = no_request("it"), .body = [](Json &output) {
                                        output = std::string(1'000'000, 'x');
                                        return 0;
                                    }});
    EXPECT_EQ(answer.output.get<std::string>().size(), 1'000'000U);
}

TEST(CallInChild, KeepsTheLibrarysLinesApart)
{
    const Call noisy{.request = no_request("it"), .body = [](Json &) {
                         std::printf("set_string=1\nline\n");
                         return 0;
                     }};
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    call({}, noisy);
    std::string lines;
    call({.trace = [&lines](std::string_view line) { lines.append(line) += '\n'; }}, noisy);
    EXPECT_EQ(lines, "set_string=1\nline\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(CallInChild, PassesOnAFailure)
{
    const Failure failure = failure_of({.request = no_request("it"), .body = [](Json &) -> int {
                                            throw Failure(Exit::invalid, "what", "hint");
                                        }});
    EXPECT_EQ(failure.status(), Exit::invalid);
    EXPECT_STREQ(failure.what(), "what");
    EXPECT_EQ(failure.hint(), "hint");
}

TEST(CallInChild, ReportsHowItDied)
{
    const Failure failure = failure_of(
        {.request = no_request("it"), .body = [](Json &) { return std::raise(SIGKILL); }});
    EXPECT_EQ(failure.status(), Exit::other);
    EXPECT_STREQ(failure.what(), "the call it was ended by signal 9");
}

TEST_F(Queue, ALateCallIsKilledAndItsRequestWithdrawn)
{
    const Failure failure = failure_of({.request = request("a"),
                                        .body =
                                            [this](Json &) {
                                                send(request("b"));
                                                send(request("a"));
                                                pause();
                                                return 0;
                                            }},
                                       {.timeout = 0.3});
    EXPECT_EQ(failure.status(), Exit::no_answer);
    EXPECT_STREQ(failure.what(), "the AT daemon did not answer call (request 12) within 0.3 s; "
                                 "the daemon had not picked up the request; it was withdrawn");
    EXPECT_EQ(failure.details(), Json::parse(R"({"withdrawn": true})"));
    EXPECT_EQ(letters(), "b");
}

TEST_F(Queue, ATakenRequestIsReportedAsTaken)
{
    const Failure failure = failure_of({.request = request("a"),
                                        .body =
                                            [](Json &) {
                                                pause();
                                                return 0;
                                            }},
                                       {.timeout = 0.2});
    EXPECT_EQ(failure.status(), Exit::no_answer);
    EXPECT_NE(
        std::string(failure.what()).find("had picked up the request and may still carry it out"),
        std::string::npos);
    EXPECT_EQ(failure.details(), Json::parse(R"({"withdrawn": false})"));
}

TEST_F(Queue, AnInterruptWithdrawsToo)
{
    bool sent = false;
    const Call waiting{.request = request("a"),
                       .body =
                           [this](Json &) {
                               send(request("a"));
                               pause();
                               return 0;
                           },
                       .on_wait =
                           [&] {
                               msqid_ds state{};
                               msgctl(queue_, IPC_STAT, &state);
                               if (state.msg_qnum > 0 && !std::exchange(sent, true))
                                   kill(getpid(), SIGINT);
                           }};
    EXPECT_THROW(call({}, waiting), Interrupted);
    EXPECT_EQ(letters(), "");
}

TEST(CallInChild, LeavesNoMarkerWhenItIsKilled)
{
    const char *const marker = "/tmp/marker";
    Call marking{.request = no_request("it"),
                 .body =
                     [marker](Json &) {
                         File(creat(marker, 0600));
                         pause();
                         return 0;
                     },
                 .marker = marker};
    EXPECT_EQ(failure_of(marking, {.timeout = 0.3}).status(), Exit::no_answer);
    EXPECT_NE(access(marker, F_OK), 0);

    marking.body = [marker](Json &) {
        File(creat(marker, 0600));
        return std::raise(SIGKILL);
    };
    EXPECT_EQ(failure_of(marking).status(), Exit::other);
    EXPECT_NE(access(marker, F_OK), 0);

    File(creat(marker, 0600)); // another process's
    EXPECT_EQ(failure_of(marking).status(), Exit::other);
    EXPECT_EQ(access(marker, F_OK), 0);
}

} // namespace
