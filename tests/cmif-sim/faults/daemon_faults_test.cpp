// Daemons that stop, end, and start again, and what happens to their queues and marker.
#include "tests/support/faulty_server.h"

#include <csignal>
#include <filesystem>

namespace
{

using namespace std::chrono_literals;
namespace fs = std::filesystem;

class DaemonFault : public FaultyServer
{
protected:
    void SetUp() override { start(); }

    static bool exists(pid_t process) { return kill(process, 0) == 0; }
    static pid_t at_daemon()
    {
        EXPECT_EQ(ask_at(4), answer::ok);
        return reader(at_requests());
    }
    static pid_t qmi_daemon()
    {
        ask_qmi(6);
        return reader(QmiServer::requests());
    }
    static char state_of(pid_t process)
    {
        std::ifstream file("/proc/" + std::to_string(process) + "/stat");
        std::string number, name;
        char state = 0;
        file >> number >> name >> state;
        return state;
    }
    static bool becomes(pid_t process, char state)
    {
        for (int tries = 2000; state_of(process) != state && tries > 0; --tries)
            std::this_thread::sleep_for(1ms);
        return state_of(process) == state;
    }
};

TEST_F(DaemonFault, EachDaemonIsAProcessOfItsOwn)
{
    const pid_t at = at_daemon(), qmi = qmi_daemon();
    EXPECT_NE(at, qmi);
    EXPECT_NE(at, server->process().process());
    EXPECT_TRUE(exists(at) && exists(qmi));
    EXPECT_NE(status().find("AT       serving, process " + std::to_string(at) + " in the box\n"),
              std::string::npos)
        << status();
}

TEST_F(DaemonFault, ADeadOneLeavesEverythingAsItWas)
{
    const pid_t at = at_daemon(), qmi = qmi_daemon();
    command("fault all die");
    EXPECT_FALSE(exists(at));
    EXPECT_FALSE(exists(qmi));
    EXPECT_TRUE(fs::exists(CMIF_QMI_READY_FILE));
    send_at(4);
    EXPECT_TRUE(stays_silent(at_replies(), 4));
    EXPECT_EQ(waiting(at_requests()), 1U);
    EXPECT_NE(status().find("AT       ended\nQMI      ended\n"), std::string::npos) << status();
}

TEST_F(DaemonFault, ADeadOneIsRestarted)
{
    const pid_t at = at_daemon();
    command("fault at die");
    send_at(4);
    command("fault at restart");
    EXPECT_TRUE(payload(at_replies(), 4)); // it was queued meanwhile
    EXPECT_NE(at_daemon(), at);
    EXPECT_TRUE(exists(at_daemon()));
}

TEST_F(DaemonFault, ARestartRemovesStaleRepliesAndRenewsTheMarker)
{
    const pid_t qmi = qmi_daemon();
    command("fault qmi 6 stale 2");
    EXPECT_EQ(waiting(qmi_replies()), 2U);
    fs::remove(CMIF_QMI_READY_FILE);
    command("fault qmi restart");
    EXPECT_EQ(waiting(qmi_replies()), 0U);
    EXPECT_TRUE(fs::exists(CMIF_QMI_READY_FILE));
    EXPECT_NE(qmi_daemon(), qmi);
}

TEST_F(DaemonFault, DiesOfARequest)
{
    command("fault at 12 die");
    EXPECT_EQ(ask_at(4), answer::ok);
    send_at(12, {"1234"});
    EXPECT_TRUE(stays_silent(at_replies(), 12));
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN"); // it was not carried out
    EXPECT_NE(status().find("AT       ended\n"), std::string::npos) << status();
    command("fault at restart");
    EXPECT_TRUE(stays_silent(at_replies(), 12)); // and is lost
    EXPECT_EQ(ask_at(12, {"1234"}), answer::ok);
}

TEST_F(DaemonFault, DiesInASearchWhoseResultIsLost)
{
    start_at_pace(0.1);
    EXPECT_EQ(ask_at(12, {"1234"}), answer::ok);
    command("fault at die after searching\nfault at restart after search-done");
    send_at(24);
    await_status("AT       ended");
    await_status("AT       serving"); // the search is over
    EXPECT_TRUE(stays_silent(at_replies(), 24));
    send_at(24);
    EXPECT_TRUE(payload(at_replies(), 24));
}

TEST_F(DaemonFault, IsKilledByHandLikeAnyProcess)
{
    const pid_t at = at_daemon();
    kill(at, SIGTERM);
    await_status("AT       ended");
    EXPECT_FALSE(exists(at));
    command("fault at restart");
    EXPECT_EQ(ask_at(4), answer::ok);
}

TEST_F(DaemonFault, AFrozenOneIsStoppedUntilItIsThawed)
{
    const pid_t at = at_daemon();
    command("fault at freeze");
    EXPECT_TRUE(becomes(at, 'T'));
    send_at(4);
    EXPECT_TRUE(stays_silent(at_replies(), 4));
    EXPECT_NE(status().find("AT       frozen, process"), std::string::npos) << status();
    command("fault at thaw");
    EXPECT_TRUE(payload(at_replies(), 4));
    EXPECT_EQ(at_daemon(), at);
}

TEST_F(DaemonFault, FreezesWithARequestInHand)
{
    command("fault at 12 freeze");
    send_at(12, {"1234"});
    EXPECT_TRUE(stays_silent(at_replies(), 12));
    EXPECT_EQ(waiting(at_requests()), 0U);
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
    command("fault at thaw");
    EXPECT_TRUE(payload(at_replies(), 12));
    EXPECT_EQ(get("lte_sim_status"), "READY");
}

TEST_F(DaemonFault, AFrozenOneSendsNoReply)
{
    start_at_pace(0.1);
    command("fault at 4 delay 2s");
    send_at(4);
    std::this_thread::sleep_for(50ms);
    command("fault at freeze");
    EXPECT_FALSE(payload(at_replies(), 4, 400ms));
    command("fault at thaw");
    EXPECT_TRUE(payload(at_replies(), 4));
}

TEST_F(DaemonFault, ADelayedReplyDiesWithItsDaemon)
{
    start_at_pace(1);
    command("fault at 4 delay 60s");
    send_at(4);
    std::this_thread::sleep_for(50ms);
    command("fault at restart");
    EXPECT_TRUE(stays_silent(at_replies(), 4));
    EXPECT_EQ(ask_at(4), answer::ok);
    EXPECT_TRUE(stays_silent(at_replies(), 4));
}

TEST_F(DaemonFault, EndsPromptlyInTheMiddleOfADelay)
{
    start_at_pace(1);
    command("fault all delay 60s");
    send_at(4);
    QmiServer::send(6, "");
    std::this_thread::sleep_for(50ms);
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(server->end(SIGTERM), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 2s);
}

TEST_F(DaemonFault, EndsPromptlyWhileFrozen)
{
    command("fault all freeze");
    send_at(4);
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(server->end(SIGTERM), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 2s);
}

TEST_F(DaemonFault, EndsPromptlyWithWhatAFreezeHasCaught)
{
    command("fault at 12 freeze");
    send_at(12, {"1234"});
    await_status("AT       frozen");
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(server->end(SIGTERM), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 2s);
    EXPECT_TRUE(stays_silent(at_replies(), 12));
}

TEST_F(DaemonFault, IgnoresARequest)
{
    command("fault at 12 ignore");
    send_at(12, {"1234"});
    EXPECT_TRUE(stays_silent(at_replies(), 12));
    EXPECT_EQ(waiting(at_requests()), 0U);
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
    EXPECT_EQ(ask_at(12, {"1234"}), answer::ok);
}

TEST_F(DaemonFault, IsNotReady)
{
    command("fault qmi not-ready");
    EXPECT_FALSE(fs::exists(CMIF_QMI_READY_FILE));
    EXPECT_EQ(ask_qmi(6), 3); // it serves nevertheless
    command("fault qmi ready");
    EXPECT_TRUE(fs::exists(CMIF_QMI_READY_FILE));
}

TEST_F(DaemonFault, LosesItsQueues)
{
    const int requests = at_requests(), replies = at_replies();
    command("fault at remove-queue request");
    msqid_ds state{};
    EXPECT_EQ(msgctl(requests, IPC_STAT, &state), -1);
    command("fault at remove-queue reply");
    EXPECT_EQ(msgctl(replies, IPC_STAT, &state), -1);
    EXPECT_EQ(ask_at(4), answer::ok); // they are made again
}

TEST_F(DaemonFault, FillsTheReplyQueueWithForeignReplies)
{
    command("fault at foreign 3\nfault qmi foreign 100000");
    EXPECT_EQ(waiting(at_replies()), 3U);
    EXPECT_EQ(payload(at_replies(), 9000), std::string(CMIF_AT_PAYLOAD, '\0'));
    const std::size_t filled = waiting(qmi_replies());
    EXPECT_GT(filled, 10U);
    QmiServer::send(6, "");
    EXPECT_TRUE(stays_silent(qmi_replies(), 6)); // there is no room
}

TEST_F(DaemonFault, LeavesStaleReplies)
{
    command("fault at 12 stale\nfault qmi 6 stale 2");
    EXPECT_EQ(waiting(at_replies()), 1U);
    EXPECT_EQ(waiting(qmi_replies()), 2U);
    EXPECT_EQ(payload(at_replies(), 12), std::string(CMIF_AT_PAYLOAD, '\0'));
    EXPECT_TRUE(payload(qmi_replies(), 6));
}

TEST_F(DaemonFault, OfADeadDaemonFails)
{
    command("fault at die");
    for (const char *fault : {"fault at freeze", "fault at thaw"}) {
        const cmif_sim::Answer failed = give(fault);
        EXPECT_EQ(failed.status, 1);
        EXPECT_EQ(failed.text, "1: the AT daemon has ended\n");
    }
}

} // namespace
