// The QMI daemon: its queues, its marker, start and end, and the settings that it finds saved.
#include "tests/support/files.h"
#include "tests/support/qmi_server.h"

#include <csignal>

namespace
{

using namespace std::chrono_literals;

using QmiDaemon = QmiServer;

bool ready()
{
    return read_file(CMIF_QMI_READY_FILE) == "on\n";
}

// ---- queues ----

TEST_F(QmiDaemon, RecreatesQueuesThatWereRemoved)
{
    start();
    msgctl(requests(), IPC_RMID, nullptr);
    EXPECT_EQ(ask_qmi(6), 3);
    msgctl(replies(), IPC_RMID, nullptr);
    EXPECT_EQ(ask_qmi(6), 3);
}

TEST_F(QmiDaemon, RemovesStaleRepliesAtItsStart)
{
    const struct {
        long type;
        int number;
    } stale = {6, 77};
    ASSERT_EQ(msgsnd(replies(), &stale, sizeof stale.number, 0), 0);
    start();
    EXPECT_EQ(ask_qmi(6), 3);
}

TEST_F(QmiDaemon, ServesRequestsThatWereQueuedBeforeItsStart)
{
    send(6, std::string(5, '\0'));
    start();
    EXPECT_NE(reply(6), std::nullopt);
}

// Fills the reply queue with replies that no caller waits for.
void fill_replies(int queue)
{
    const qmi_msg record{99, ""};
    while (msgsnd(queue, &record, CMIF_QMI_PAYLOAD, IPC_NOWAIT) == 0) {}
}

TEST_F(QmiDaemon, WaitsForRoomInTheReplyQueueWhileTheAtDaemonContinues)
{
    start();
    fill_replies(replies());
    send(6, std::string(5, '\0'));
    EXPECT_EQ(reply(6, 50ms), std::nullopt);
    unlock();
    EXPECT_NE(reply(99), std::nullopt);
    EXPECT_NE(reply(6), std::nullopt);
}

TEST_F(QmiDaemon, EndsEvenIfTheReplyQueueIsFull)
{
    start();
    fill_replies(replies());
    send(6, std::string(5, '\0'));
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(server->end(SIGTERM), 0);
    EXPECT_FALSE(file_exists(CMIF_QMI_READY_FILE));
}

// ---- start, marker and end ----

class QmiDaemonEnds : public QmiDaemon, public testing::WithParamInterface<int>
{
};

TEST_P(QmiDaemonEnds, CleanlyAndPromptlyWithoutItsMarker)
{
    start();
    EXPECT_TRUE(ready());
    connect();
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(server->end(GetParam()), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - before, 2s);
    EXPECT_FALSE(file_exists(CMIF_QMI_READY_FILE));
    EXPECT_EQ(server->errors(), "");
    int status = -1;
    EXPECT_EQ(shared_CMIF_get_sim_status(&status), 1); // not ready
}

INSTANTIATE_TEST_SUITE_P(BySignal, QmiDaemonEnds, testing::Values(SIGTERM, SIGINT),
                         [](const auto &signal) {
                             return signal.param == SIGTERM ? "Term" : "Int";
                         });

TEST_F(QmiDaemon, TheMarkerIsWorldReadableAndLeavesNoTemporaryFile)
{
    start();
    EXPECT_TRUE(ready());
    const auto mode = std::filesystem::status(CMIF_QMI_READY_FILE).permissions();
    EXPECT_EQ(mode, std::filesystem::perms(0644));
    for (const auto &entry : std::filesystem::directory_iterator("/tmp")) {
        const std::string path = entry.path();
        EXPECT_TRUE(path == CMIF_QMI_READY_FILE || !path.starts_with(CMIF_QMI_READY_FILE)) << path;
    }
}

TEST_F(QmiDaemon, StartsAfterAKilledServer)
{
    start();
    EXPECT_EQ(server->end(SIGKILL), 128 + SIGKILL);
    EXPECT_TRUE(ready()); // a killed daemon can not remove it
    start();
    EXPECT_TRUE(ready());
    EXPECT_EQ(ask_qmi(6), 3);
    EXPECT_EQ(server->end(SIGTERM), 0);
    EXPECT_FALSE(file_exists(CMIF_QMI_READY_FILE));
}

TEST_F(QmiDaemon, RefusesToStartTwiceAndKeepsTheRunningDaemonsMarker)
{
    start();
    cmif_sim::ServerOptions options = both();
    options.at = false;
    Server second(options);
    EXPECT_FALSE(second.ready());
    EXPECT_EQ(second.process().wait(), 1);
    EXPECT_NE(second.errors().find("QMI"), std::string::npos) << second.errors();
    EXPECT_TRUE(ready());
    EXPECT_EQ(ask_qmi(6), 3);
}

TEST_F(QmiDaemon, DoesNotStartWithoutItsMarker)
{
    std::filesystem::create_directories(CMIF_QMI_READY_FILE "/in/the/way");
    Server refused(both());
    EXPECT_FALSE(refused.ready());
    EXPECT_EQ(refused.process().wait(), 1);
    EXPECT_NE(refused.errors().find(CMIF_QMI_READY_FILE), std::string::npos);
}

TEST_F(QmiDaemon, EachDaemonRunsWithoutTheOther)
{
    cmif_sim::ServerOptions options = both();
    options.at = false;
    start(options);
    EXPECT_EQ(ask_qmi(6), 3);
    AtServer::send(record_of(4, {}));
    EXPECT_EQ(AtServer::reply(4, 50ms), std::nullopt);
    restart(quick());
    EXPECT_FALSE(file_exists(CMIF_QMI_READY_FILE));
    EXPECT_EQ(ask(4), answer::ok);
    send(6, std::string(5, '\0'));
    EXPECT_EQ(reply(6, 50ms), std::nullopt);
}

// ---- across restarts ----

TEST_F(QmiDaemon, KeepsASavedProfile)
{
    start();
    ASSERT_EQ(ask_qmi(3, wire_profile("own.example", "me", "secret", "231")), answer::ok);
    unlock_and_register();
    ASSERT_EQ(ask_qmi(4), answer::ok);
    ASSERT_TRUE(eventually_equals("lte_qmi_connection_status", "3"));
    ASSERT_EQ(tarnNvramConfig_save(), 0);
    set_profile("never.saved");
    restart();
    EXPECT_EQ(get("lte_qmi_apn"), "own.example");
    EXPECT_EQ(get("lte_qmi_user"), "me");
    EXPECT_EQ(get("lte_qmi_password"), "secret");
    EXPECT_EQ(get("lte_qmi_auth"), "2");
    EXPECT_EQ(get("lte_qmi_pdp"), "3");
    EXPECT_EQ(get("lte_qmi_cur_ip_family"), "1");
    EXPECT_EQ(get("lte_qmi_connection_status"), "1"); // was saved as "3"
    EXPECT_EQ(get("lte_ipv4_address"), "");
    unlock_and_register();
    EXPECT_EQ(ask_qmi(4), answer::ok);
    EXPECT_TRUE(eventually_equals("lte_pdp_apn", "own.example"));
}

TEST_F(QmiDaemon, ForgetsAProfileThatWasNotSaved)
{
    start();
    set_profile("own.example");
    restart();
    EXPECT_EQ(get("lte_qmi_apn"), "");
    EXPECT_EQ(get("lte_qmi_auth"), "0");
}

TEST_F(QmiDaemon, TreatsSavedValuesOutOfRangeAsUnset)
{
    set("lte_qmi_apn", std::string(41, 'a'));
    set("lte_qmi_user", std::string(129, 'u'));
    set("lte_qmi_password", std::string(5000, 'p'));
    set("lte_qmi_auth", "4");
    set("lte_qmi_pdp", "-1");
    set("lte_qmi_cur_ip_family", "one");
    ASSERT_EQ(tarnNvramConfig_save(), 0);
    start();
    EXPECT_EQ(get("lte_qmi_apn") + get("lte_qmi_user") + get("lte_qmi_password"), "");
    EXPECT_EQ(get("lte_qmi_auth") + get("lte_qmi_pdp") + get("lte_qmi_cur_ip_family"), "000");
}

TEST_F(QmiDaemon, KeepsConfiguredWaitTimes)
{
    set("lte_qmi_wait_time_after_restart", "30");
    ASSERT_EQ(tarnNvramConfig_save(), 0);
    start();
    EXPECT_EQ(get("lte_qmi_wait_time_before_restart"), "5");
    EXPECT_EQ(get("lte_qmi_wait_time_after_restart"), "30");
}

} // namespace
