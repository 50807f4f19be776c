// How the process of a call ends when it is told to.
#include "client/call_end.h"
#include "cmif/cmif.h"
#include "tests/support/child.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string_view>
#include <sys/msg.h>
#include <unistd.h>

namespace
{

void print(std::string_view text)
{
    ASSERT_EQ(write(STDOUT_FILENO, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

void prepare(const char *marker)
{
    setpgid(0, 0);
    client::end_on_sigterm(marker);
}

TEST(CallEnd, IsImmediateOutsideAnExchange)
{
    Child call([] {
        prepare(nullptr);
        std::raise(SIGTERM);
        print("goes on");
    });
    EXPECT_EQ(call.wait(), 1);
    EXPECT_EQ(call.output(), "");
}

TEST(CallEnd, WaitsUntilAnExchangeIsCounted)
{
    Child call([] {
        prepare(nullptr);
        {
            const client::Exchange exchange;
            std::raise(SIGTERM);
            print("counted");
        }
        print("goes on");
    });
    EXPECT_EQ(call.wait(), 1);
    EXPECT_EQ(call.output(), "counted");
}

TEST(CallEnd, WakesAReceiveThatBeganAfterTheSignal)
{
    Child call([] {
        const int queue = msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
        prepare(nullptr);
        const client::Exchange exchange;
        std::raise(SIGTERM);
        cmif_msg record{};
        if (msgrcv(queue, &record, CMIF_AT_PAYLOAD, 0, 0) == -1)
            print("woken");
    });
    EXPECT_EQ(call.wait(), 1);
    EXPECT_EQ(call.output(), "woken");
}

TEST(CallEnd, RemovesTheMarker)
{
    Child call([] {
        close(creat("/tmp/marker", 0600));
        prepare("/tmp/marker");
        std::raise(SIGTERM);
    });
    EXPECT_EQ(call.wait(), 1);
    EXPECT_NE(access("/tmp/marker", F_OK), 0);
}

} // namespace
