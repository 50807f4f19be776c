// The AT daemon: its queues, its records, its start and its end.
#include "modems/simulated/network_lock.h"
#include "tests/support/at_server.h"

#include <csignal>

namespace
{

using namespace std::chrono_literals;

constexpr const char *control_key = simulated::NetworkLock::control_key;

using AtDaemon = AtServer;

TEST_F(AtDaemon, ServesEveryRequestOfTheChannel)
{
    start();
    unlock();
    for (long code = 1; code <= 27; ++code) {
        if (code == 5 || code == 20)
            continue;
        const int result = ask(code);
        EXPECT_NE(result, -999) << code << " is not answered";
        EXPECT_NE(result == answer::not_supported, code != 10) << code; // 10 lacks its facility
    }
    EXPECT_EQ(ask(5), answer::not_supported);
}

TEST_F(AtDaemon, NeverAnswersTheFirmwareDownloadRequest)
{
    start();
    send(record_of(20, {}));
    EXPECT_EQ(ask(4), answer::ok); // served after it
    EXPECT_EQ(reply(20, 50ms), std::nullopt);
}

TEST_F(AtDaemon, RefusesUnknownRequests)
{
    start();
    for (const long code : {5L, 28L, 899L, 2147483647L})
        EXPECT_EQ(ask(code), answer::not_supported) << code;
}

TEST_F(AtDaemon, RefusesMessagesOfAnotherSize)
{
    start();
    const cmif_msg record = record_of(12, {"1234"});
    send(record, CMIF_AT_PAYLOAD - 1);
    EXPECT_EQ(reply(12), answer::incorrect_parameters);
    send(record, 0);
    EXPECT_EQ(reply(12), answer::incorrect_parameters);
    const struct {
        long type = 12;
        char payload[4000] = "1234";
    } large;
    ASSERT_EQ(msgsnd(requests(), &large, sizeof large.payload, 0), 0);
    EXPECT_EQ(reply(12), answer::incorrect_parameters);
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
    unlock();
}

TEST_F(AtDaemon, RefusesFieldsWithoutANul)
{
    start();
    const std::string endless(30, '1');
    EXPECT_EQ(ask(12, {endless}), answer::incorrect_parameters);
    EXPECT_EQ(ask(14, {"12345678", endless}), answer::incorrect_parameters);
    unlock();
    EXPECT_EQ(ask(10, {"1", "", endless, "PN"}), answer::incorrect_parameters);
    EXPECT_EQ(ask(2, {"", "", "", std::string(22, '1')}), answer::incorrect_parameters);
    EXPECT_EQ(get("lte_mobile_pin1c"), "3");
    EXPECT_EQ(get("lte_mobile_puk1c"), "10");
}

TEST_F(AtDaemon, IgnoresFieldsThatTheRequestDoesNotUse)
{
    start();
    const std::string noise(30, '\xff');
    EXPECT_EQ(ask(4, {noise, noise, noise, std::string(22, '\xff')}), answer::ok);
    EXPECT_EQ(ask(12, {"1234", noise, noise, std::string(22, '\xff')}), answer::ok);
}

// The value is in the store when the reply arrives, every time.
TEST_F(AtDaemon, PublishesBeforeItReplies)
{
    start();
    for (int i = 0; i < 300; ++i) {
        const std::string mode = std::to_string(i % 4);
        ASSERT_EQ(ask(2, {"", "", "", mode}), answer::ok);
        ASSERT_EQ(get("lte_network_search_mode"), mode);
    }
}

TEST_F(AtDaemon, AStartPowerCyclesTheStore)
{
    set("own_setting", "saved");
    ASSERT_EQ(tarnNvramConfig_save(), 0);
    set("own_setting", "not saved");
    set("lte_sim_status", "READY");
    start();
    EXPECT_EQ(get("own_setting"), "saved");
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
}

TEST_F(AtDaemon, ServesRequestsThatWereQueuedBeforeItsStart)
{
    send(record_of(12, {"1234"}));
    start();
    EXPECT_EQ(reply(12), answer::ok);
    EXPECT_EQ(get("lte_sim_status"), "READY");
}

TEST_F(AtDaemon, RecreatesQueuesThatWereRemoved)
{
    start();
    msgctl(requests(), IPC_RMID, nullptr);
    EXPECT_EQ(ask(4), answer::ok);
    msgctl(replies(), IPC_RMID, nullptr);
    EXPECT_EQ(ask(4), answer::ok);
}

// Fills the reply queue with replies that no caller waits for.
void fill_replies(int queue)
{
    cmif_msg record{};
    record.mod_id = 99;
    while (msgsnd(queue, &record, CMIF_AT_PAYLOAD, IPC_NOWAIT) == 0) {}
}

TEST_F(AtDaemon, WaitsForRoomInTheReplyQueue)
{
    start();
    fill_replies(replies());
    send(record_of(4, {}));
    EXPECT_EQ(reply(4, 50ms), std::nullopt);
    EXPECT_EQ(reply(99), 0);
    EXPECT_EQ(reply(4), answer::ok);
}

TEST_F(AtDaemon, EndsEvenIfTheReplyQueueIsFull)
{
    start();
    fill_replies(replies());
    send(record_of(4, {}));
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(server->end(SIGTERM), 0);
}

class AtDaemonEnds : public AtDaemon, public testing::WithParamInterface<int>
{
};

TEST_P(AtDaemonEnds, CleanlyAndPromptlyAndLeavesTheQueues)
{
    start();
    unlock();
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(server->end(GetParam()), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 2s);
    EXPECT_GE(msgget(CMIF_AT_REQUEST_KEY, 0), 0);
    EXPECT_GE(msgget(CMIF_AT_REPLY_KEY, 0), 0);
    EXPECT_EQ(server->errors(), "");
}

TEST_P(AtDaemonEnds, InTheMiddleOfASearch)
{
    cmif_sim::ServerOptions options = quick();
    options.pace = 100;
    start(options);
    unlock();
    send(record_of(24, {}));
    EXPECT_EQ(ask(23), answer::search_running);
    EXPECT_EQ(server->end(GetParam()), 0);
    EXPECT_EQ(reply(24, 1ms), std::nullopt);
}

TEST_P(AtDaemonEnds, EvenIfItWasStartedWithTheSignalIgnored)
{
    std::signal(GetParam(), SIG_IGN);
    start();
    EXPECT_EQ(server->end(GetParam()), 0);
}

INSTANTIATE_TEST_SUITE_P(BySignal, AtDaemonEnds, testing::Values(SIGTERM, SIGINT),
                         [](const auto &signal) {
                             return signal.param == SIGTERM ? "Term" : "Int";
                         });

TEST_F(AtDaemon, RefusesToStartTwiceAndNamesTheRunningProcess)
{
    start();
    unlock();
    Server second(quick());
    EXPECT_FALSE(second.ready());
    EXPECT_EQ(second.process().wait(), 1);
    EXPECT_NE(second.errors().find(std::to_string(server->process().process())), std::string::npos)
        << second.errors();
    EXPECT_EQ(get("lte_sim_status"), "READY"); // the first one's state is untouched
    EXPECT_EQ(ask(4), answer::ok);
}

TEST_F(AtDaemon, StartsAfterAKilledServer)
{
    start();
    unlock();
    EXPECT_EQ(server->end(SIGKILL), 128 + SIGKILL);
    start();
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
    EXPECT_EQ(ask(4), answer::ok);
    EXPECT_EQ(server->end(SIGTERM), 0);
    start();
    EXPECT_EQ(ask(4), answer::ok);
}

TEST_F(AtDaemon, RemovesStaleRepliesAtItsStart)
{
    cmif_msg stale{};
    stale.mod_id = 4;
    stale.ret_code = 77;
    const int queue = msgget(CMIF_AT_REPLY_KEY, IPC_CREAT | 0666);
    for (int i = 0; i < 3; ++i)
        ASSERT_EQ(msgsnd(queue, &stale, CMIF_AT_PAYLOAD, 0), 0);
    start();
    EXPECT_EQ(ask(4), answer::ok);
    EXPECT_EQ(reply(4, 1ms), std::nullopt);
}

TEST_F(AtDaemon, ReportsWhyItCanNotStart)
{
    const std::filesystem::path lock = "/tmp/cmif-sim-at.lock";
    std::filesystem::remove(lock); // an earlier server's, where /tmp is shared
    std::filesystem::create_directory(lock);
    Server refused(quick());
    EXPECT_FALSE(refused.ready());
    EXPECT_EQ(refused.process().wait(), 1);
    EXPECT_NE(refused.errors().find(lock), std::string::npos);
    std::filesystem::remove(lock);
}

TEST_F(AtDaemon, PrintsEachRecordWithoutSecrets)
{
    cmif_sim::ServerOptions options = quick();
    options.verbose = true;
    start(options);
    ask(12, {"1234"});
    ask(13, {"1234", "4321"});
    ask(14, {"12345678", "5555"});
    ask(10, {"1", "00102", control_key, "PN"});
    ask(11, {control_key});
    ask(12, {std::string(30, '7')});
    send(record_of(12, {"1234"}), CMIF_AT_PAYLOAD - 1);
    EXPECT_EQ(reply(12), answer::incorrect_parameters);
    ask(17, {"001\n2", "\x1b[2J"});
    set_functionality(4);
    ask(5);
    send(record_of(20, {}));
    ask(4);
    ASSERT_EQ(server->end(SIGTERM), 0);
    EXPECT_EQ(server->errors(),
              "AT -> 12 shared_CMIF_set_EntermobilePIN pin=\"****\"\n"
              "AT <- 12 shared_CMIF_set_EntermobilePIN ret_code=0 (ok)\n"
              "AT -> 13 shared_CMIF_set_ChangemobileSimPIN old_pin=\"****\" new_pin=\"****\"\n"
              "AT <- 13 shared_CMIF_set_ChangemobileSimPIN ret_code=0 (ok)\n"
              "AT -> 14 shared_CMIF_set_EntermobilePINPUK puk=\"****\" new_pin=\"****\"\n"
              "AT <- 14 shared_CMIF_set_EntermobilePINPUK ret_code=0 (ok)\n"
              "AT -> 10 shared_CMIF_set_NetworkPersonalizationLock facility=\"PN\" mode=\"1\" "
              "network=\"00102\" key=\"****\"\n"
              "AT <- 10 shared_CMIF_set_NetworkPersonalizationLock ret_code=0 (ok)\n"
              "AT -> 11 shared_CMIF_set_NetworkPersonalizationUNLock key=\"****\"\n"
              "AT <- 11 shared_CMIF_set_NetworkPersonalizationUNLock ret_code=0 (ok)\n"
              "AT -> 12 shared_CMIF_set_EntermobilePIN (malformed: a field without its end)\n"
              "AT <- 12 shared_CMIF_set_EntermobilePIN ret_code=50 (incorrect_parameters)\n"
              "AT -> 12 shared_CMIF_set_EntermobilePIN (malformed: wrong size)\n"
              "AT <- 12 shared_CMIF_set_EntermobilePIN ret_code=50 (incorrect_parameters)\n"
              "AT -> 17 shared_CMIF_SetNetworkProvider numeric=\"001?2\" technology=\"?[2J\"\n"
              "AT <- 17 shared_CMIF_SetNetworkProvider ret_code=50 (incorrect_parameters)\n"
              "AT -> 22 shared_CMIF_set_phone_functionality level=\"4\"\n"
              "AT <- 22 shared_CMIF_set_phone_functionality ret_code=0 (ok)\n"
              "AT -> 5 unknown request\n"
              "AT <- 5 unknown request ret_code=204 (not_supported)\n"
              "AT -> 20 shared_CMIF_set_AT_qfirehose\n"
              "AT -> 4 shared_CMIF_get_mobilePINPUKC\n"
              "AT <- 4 shared_CMIF_get_mobilePINPUKC ret_code=0 (ok)\n");
}

TEST_F(AtDaemon, RepliesDoNotReturnThePin)
{
    start();
    send(record_of(12, {"1234"}));
    struct {
        long type;
        char payload[CMIF_AT_PAYLOAD];
    } record{};
    ASSERT_EQ(msgrcv(replies(), &record, CMIF_AT_PAYLOAD, 12, 0), CMIF_AT_PAYLOAD);
    EXPECT_EQ(std::string(record.payload, CMIF_AT_PAYLOAD), std::string(CMIF_AT_PAYLOAD, '\0'));
}

} // namespace
