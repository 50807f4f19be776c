// The AT channel itself: its queues, its waiting, and which caller gets which reply. What every
// request must do is in at_request.h, and runs in the tests of the requests.
#include "cmif/cmif.h"
#include "tests/support/at_request.h"
#include "tests/support/child.h"
#include "tests/support/enter_pin.h"
#include "tests/support/memory_store.h"
#include "tests/support/queue_pair.h"
#include "tests/support/system_calls.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <gtest/gtest.h>
#include <sys/msg.h>
#include <sys/stat.h>
#include <thread>

// The wire: offsets hold everywhere, the whole where a long has 32 bits.
constexpr size_t type_size = sizeof(long);
static_assert(offsetof(cmif_msg, mod_id) == 0);
static_assert(offsetof(cmif_msg, set_string) == type_size);
static_assert(offsetof(cmif_msg, set_string2) == type_size + 30);
static_assert(offsetof(cmif_msg, set_string3) == type_size + 60);
static_assert(offsetof(cmif_msg, set_value) == type_size + 90);
static_assert(offsetof(cmif_msg, ret_code) == type_size + 112);
static_assert(sizeof(long) != 4 || sizeof(cmif_msg) == 120);
static_assert(CMIF_AT_REQUEST_KEY == 899 && CMIF_AT_REPLY_KEY == 900 && CMIF_AT_PAYLOAD == 116);

namespace
{
// Answers on the reply queue that the library has just created.
void answer_before_the_send()
{
    calls::before("msgsnd", [] {
        const struct {
            long type;
            int payload[29];
        } reply{12, {}};
        calls::real_msgsnd(calls::real_msgget(900, 0), &reply, 116, 0);
    });
}
} // namespace

TEST(AtQueues, AreCreatedReadableAndWritableForAllUsers)
{
    umask(0077);
    answer_before_the_send();
    EXPECT_FALSE(queue_exists(899));
    EXPECT_FALSE(queue_exists(900));
    EXPECT_EQ(enter_pin(), 0);
    EXPECT_EQ(queue_mode(899), 0666U);
    EXPECT_EQ(queue_mode(900), 0666U);
    const QueuePair removed_in_the_end = QueuePair::at();
}

TEST(AtQueues, AreLookedUpAgainByEveryCall)
{
    answer_before_the_send();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(enter_pin(), 0);
        const QueuePair gone_before_the_next_call = QueuePair::at();
    }
    EXPECT_EQ(enter_pin(), 0);
    EXPECT_EQ(calls::count("msgget"), 6);
    const QueuePair queues = QueuePair::at();
    EXPECT_TRUE(queues.take_request().has_value());
}

TEST(AtQueues, StayAfterTheCall)
{
    const QueuePair queues = QueuePair::at();
    queues.reply(12, at_reply(0));
    enter_pin();
    EXPECT_EQ(calls::real_msgget(899, 0), queues.requests());
    EXPECT_EQ(calls::real_msgget(900, 0), queues.replies());
}

// 0 is an identifier like any other; a namespace of its own gives it to its first queue.
TEST(AtQueues, MayHaveIdentifierZero)
{
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    if (queues.requests() != 0)
        GTEST_SKIP() << "not the first queue of this namespace";
    queues.reply(12, at_reply(8));
    const Recorded run = record(enter_pin);
    EXPECT_EQ(run.result, 8);
    EXPECT_EQ(run.output, pin_asked(queues) + pin_received);
}

TEST(AtQueues, MayHaveIdentifierZeroForReplies)
{
    const int replies = calls::real_msgget(900, IPC_CREAT | 0666);
    const QueuePair queues = QueuePair::at();
    if (replies != 0)
        GTEST_SKIP() << "not the first queue of this namespace";
    queues.reply(12, at_reply(8));
    EXPECT_EQ(enter_pin(), 8);
}

TEST(AtWait, LastsUntilTheDaemonAnswers)
{
    const QueuePair queues = QueuePair::at();
    Child child([] { _exit(enter_pin()); });
    EXPECT_EQ(queues.wait_for_request().payload, at_payload({.set_string = "1234"}));
    EXPECT_TRUE(child.still_runs());
    queues.reply(12, at_reply(42));
    EXPECT_EQ(child.wait(), 42);
}

TEST(AtWait, LastsWhileRepliesOfOtherCodesArrive)
{
    const QueuePair queues = QueuePair::at();
    Child child([] { _exit(enter_pin()); });
    (void)queues.wait_for_request();
    queues.reply(11, at_reply(1));
    queues.reply(13, at_reply(2));
    EXPECT_TRUE(child.still_runs());
    queues.reply(12, at_reply(42));
    EXPECT_EQ(child.wait(), 42);
    EXPECT_EQ(queues.take_reply().value_or(Message{}).type, 11);
    EXPECT_EQ(queues.take_reply().value_or(Message{}).type, 13);
}

TEST(AtWait, TakesTheFirstReplyOfItsCodeEvenAStaleOne)
{
    const QueuePair queues = QueuePair::at();
    queues.reply(1, at_reply(100));
    queues.reply(12, at_reply(101));
    queues.reply(12, at_reply(102));
    EXPECT_EQ(enter_pin(), 101);
    EXPECT_EQ(enter_pin(), 102);
    EXPECT_EQ(queues.take_reply().value_or(Message{}).payload, at_reply(100));
    EXPECT_FALSE(queues.take_reply().has_value());
}

TEST(AtWait, LeavesASecondReplyForTheNextCall)
{
    const QueuePair queues = QueuePair::at();
    {
        const ScriptedDaemon twice(queues, [&](const Message &request) {
            queues.reply(request.type, at_reply(1));
            queues.reply(request.type, at_reply(2));
        });
        EXPECT_EQ(enter_pin(), 1);
    }
    EXPECT_EQ(enter_pin(), 2);
}

TEST(AtWait, LastsWhileTheRequestQueueIsFull)
{
    const QueuePair queues = QueuePair::at();
    const char filler[sizeof(long) + 116] = {1};
    int fillers = 0;
    while (calls::real_msgsnd(queues.requests(), filler, 116, IPC_NOWAIT) == 0)
        ++fillers;
    queues.reply(12, at_reply(42));
    Child child([] { _exit(enter_pin()); });
    EXPECT_TRUE(child.still_runs());
    while (fillers-- > 0)
        (void)queues.wait_for_request();
    EXPECT_EQ(queues.wait_for_request().type, 12);
    EXPECT_EQ(child.wait(), 42);
}

// A signal interrupts the wait for real: a line, and the wait goes on.
TEST(AtWait, SurvivesSignals)
{
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    Child child([] {
        struct sigaction action {
        };
        action.sa_handler = [](int) {};
        sigaction(SIGUSR1, &action, nullptr);
        setvbuf(stdout, nullptr, _IONBF, 0); // for the parent to see each line at once
        _exit(enter_pin());
    });
    (void)queues.wait_for_request();
    while (!child.output().ends_with(pin_receive_failed)) {
        child.signal(SIGUSR1);
        std::this_thread::yield();
    }
    EXPECT_TRUE(child.still_runs());
    queues.reply(12, at_reply(42));
    EXPECT_EQ(child.wait(), 42);
    const std::string output = child.output();
    EXPECT_TRUE(output.starts_with(pin_asked(queues) + pin_receive_failed));
    EXPECT_TRUE(output.ends_with(pin_receive_failed + pin_received));
}

TEST(AtWait, NeverEndsWhenTheReplyQueueIsRemoved)
{
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    Child child([] { enter_pin(); });
    (void)queues.wait_for_request();
    queues.remove_replies();
    const std::string failed_twice = pin_asked(queues) + pin_receive_failed + pin_receive_failed;
    while (!child.output().starts_with(failed_twice))
        std::this_thread::yield();
    EXPECT_TRUE(child.still_runs());
}

// A failed receive may overwrite the type in the record: the next one asks for the code all the
// same.
TEST(AtWait, AsksForItsOwnCodeAgainAfterAFailure)
{
    calls::script("msgrcv", {calls::fails(EINTR), calls::yields(116)});
    const Recorded run = record(enter_pin);
    const QueuePair removed_in_the_end = QueuePair::at();
    const std::string receive = "msgrcv(900, type 12, size 116, flags 0)";
    EXPECT_EQ(std::count(run.steps.begin(), run.steps.end(), receive), 2);
    EXPECT_EQ(calls::count("msgrcv"), 2);
}

TEST(AtWait, GoesOnAfterAThousandFailures)
{
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    queues.reply(12, at_reply(7));
    calls::script("msgrcv", calls::times(1000, calls::fails(EIDRM)));
    const Recorded run = record(enter_pin);
    EXPECT_EQ(run.result, 7);
    std::string expected = pin_asked(queues);
    for (int i = 0; i < 1000; ++i)
        expected += pin_receive_failed;
    EXPECT_EQ(run.output, expected + pin_received);
    EXPECT_EQ(calls::count("msgrcv"), 1001);
    EXPECT_EQ(calls::count("sleep"), 0);
    EXPECT_EQ(calls::count("msgget"), 2);
    EXPECT_EQ(store::reads("debug_at_cmif"), 6); // queue, code, field, sent, failed, received
}

// What the send could not deliver is not tried again.
TEST(AtSend, FailsWithoutARetryWhenTheQueueIsRemoved)
{
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    calls::before("msgsnd", [&] { queues.remove_requests(); });
    const Recorded run = record(enter_pin);
    EXPECT_EQ(run.result, 3);
    EXPECT_TRUE(run.output.ends_with("set_string=1234\n"
                                     "cmif_common:shared_CMIF_set_EntermobilePIN msgsnd failed\n"));
    EXPECT_EQ(calls::count("msgsnd"), 1);
    EXPECT_EQ(calls::count("msgrcv"), 0);
}

// Threads that wait for different codes get their own replies.
TEST(AtWait, GivesEachThreadTheReplyOfItsCode)
{
    const QueuePair queues = QueuePair::at();
    const ScriptedDaemon daemon(queues, [&](const Message &request) {
        queues.reply(request.type, at_reply(static_cast<int>(request.type)));
    });
    const std::pair<int (*)(), int> callers[] = {
        {enter_pin, 12},
        {shared_CMIF_set_timezone, 1},
        {shared_CMIF_set_FactoryReset, 21},
        {shared_CMIF_get_ModeManualSearch, 23},
    };
    std::vector<std::thread> threads;
    for (const auto &[call, code] : callers)
        threads.emplace_back([call = call, code = code] {
            for (int i = 0; i < 50; ++i)
                EXPECT_EQ(call(), code);
        });
    for (std::thread &thread : threads)
        thread.join();
}
