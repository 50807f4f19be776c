// A frozen daemon while a manual clock stands and goes on.
#include "tests/support/faulty_server.h"

namespace
{

using namespace std::chrono_literals;

class FrozenByTheManualClock : public FaultyServer
{
protected:
    void SetUp() override
    {
        cmif_sim::ServerOptions options = both();
        options.manual_clock = true;
        start(options);
    }
};

// The clock does not wait for what can't go on.
TEST_F(FrozenByTheManualClock, AReplyDoesNotStopTime)
{
    command("fault at 4 delay 2s");
    send_at(4);
    await_status("fault", false);
    command("fault at freeze");
    command("advance 30s");
    EXPECT_TRUE(stays_silent(at_replies(), 4));
    command("fault at thaw");
    EXPECT_TRUE(payload(at_replies(), 4));
}

TEST_F(FrozenByTheManualClock, ARequestIsServedBeforeTimeGoesOn)
{
    command("fault at 12 freeze");
    send_at(12, {"1234"});
    await_status("AT       frozen", true);
    command("advance 30s");
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
    command("fault at thaw\nadvance 5s");
    EXPECT_EQ(get("lte_sim_status"), "READY");
    EXPECT_EQ(get("lte_network_reg_status_state"), "1"); // 3 s after the PIN
    EXPECT_TRUE(payload(at_replies(), 12));
}

TEST_F(FrozenByTheManualClock, ARequestDiesWithItsDaemon)
{
    command("fault at 12 freeze");
    send_at(12, {"1234"});
    await_status("AT       frozen", true);
    command("fault at restart\nadvance 30s");
    EXPECT_TRUE(stays_silent(at_replies(), 12));
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
    EXPECT_EQ(ask_at(4), answer::ok);
}

} // namespace
