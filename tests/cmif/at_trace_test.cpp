// The trace places of an AT request: each reads its switch on its own first use.
#include "cmif/cmif.h"
#include "tests/support/at_request.h"
#include "tests/support/enter_pin.h"
#include "tests/support/memory_store.h"
#include "tests/support/queue_pair.h"
#include "tests/support/system_calls.h"

#include <cerrno>
#include <gtest/gtest.h>

// The sites after the wait see what changed during it.
TEST(AtTrace, SeesASwitchTurnedOnDuringTheWaitOnlyAfterIt)
{
    const QueuePair queues = QueuePair::at();
    calls::before("msgrcv", [] { store::set("debug_at_cmif", "1"); });
    for (int i = 0; i < 2; ++i) {
        queues.reply(12, at_reply(0));
        EXPECT_EQ(record(enter_pin).output, pin_received);
    }
}

TEST(AtTrace, SeesASwitchTurnedOffDuringTheWaitOnlyAfterIt)
{
    store::set("debug_at_cmif", "1");
    const QueuePair queues = QueuePair::at();
    calls::before("msgrcv", [] { store::set("debug_at_cmif", "0"); });
    for (int i = 0; i < 2; ++i) {
        queues.reply(12, at_reply(0));
        EXPECT_EQ(record(enter_pin).output, pin_asked(queues));
    }
}

TEST(AtTrace, IsDecidedForEachRequestSeparately)
{
    const QueuePair queues = QueuePair::at();
    const auto call = [&](int (*request)(), long code) {
        queues.reply(code, at_reply(0));
        return record(request).output;
    };
    store::set("debug_at_cmif", "1");
    EXPECT_NE(call(shared_CMIF_set_timezone, 1), "");
    store::set("debug_at_cmif", "0");
    EXPECT_EQ(call(shared_CMIF_set_FactoryReset, 21), "");
    EXPECT_EQ(call(enter_pin, 12), "");
    store::set("debug_at_cmif", "1");
    EXPECT_NE(call(shared_CMIF_set_timezone, 1), "");
    EXPECT_EQ(call(shared_CMIF_set_FactoryReset, 21), "");
    EXPECT_EQ(call(enter_pin, 12), "");
    EXPECT_NE(call([] { return shared_CMIF_set_ChangemobileSimPIN("1", "2"); }, 13), "");
}

// A place that was never reached has not read its switch yet.
TEST(AtTrace, OfAFailureIsDecidedWhenItFirstFails)
{
    const std::string name = "shared_CMIF_set_EntermobilePIN";
    const QueuePair queues = QueuePair::at();
    queues.reply(12, at_reply(0));
    EXPECT_EQ(record(enter_pin).output, "");
    store::set("debug_at_cmif", "1");
    calls::script("msgget", {calls::fails(ENOSPC)});
    EXPECT_EQ(record(enter_pin).output, "cmif_common:" + name + " msgget failed\n");
    calls::script("msgget", {calls::real, calls::fails(ENOSPC)});
    EXPECT_EQ(record(enter_pin).output, "[" + name + "] - msgget failed\n");
    calls::script("msgsnd", {calls::fails(EAGAIN)});
    EXPECT_EQ(record(enter_pin).output, "cmif_common:" + name + " msgsnd failed\n");
    calls::script("msgrcv", {calls::fails(EINTR), calls::fails(EIDRM)});
    queues.reply(12, at_reply(0));
    EXPECT_EQ(record(enter_pin).output, pin_receive_failed + pin_receive_failed);
    EXPECT_EQ(store::reads("debug_at_cmif"), 5 + 4);
}

TEST(AtTrace, ReadsASwitchOfMinusOneAgainEachTime)
{
    store::set("debug_at_cmif", "-1");
    const QueuePair queues = QueuePair::at();
    for (int calls = 1; calls <= 3; ++calls) {
        queues.reply(12, at_reply(0));
        EXPECT_EQ(record(enter_pin).output, "");
        EXPECT_EQ(store::reads("debug_at_cmif"), calls * 5);
    }
    store::set("debug_at_cmif", "2");
    queues.reply(12, at_reply(0));
    EXPECT_EQ(record(enter_pin).output, pin_asked(queues) + pin_received);
}
