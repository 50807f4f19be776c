// The QMI daemon: its queues, its records, its marker, its start and its end, and the connection as
// the library's callers see it.
#include "network_lock.h"
#include "ret_code.h"
#include "support/at_server.h"
#include "support/files.h"

#include <csignal>

namespace
{

using namespace std::chrono_literals;

// A payload of the given size, a profile at its start perhaps.
struct Request {
    long type;
    char payload[4000] = {};
};

class QmiDaemon : public AtServer
{
protected:
    static sim::ServerOptions both()
    {
        sim::ServerOptions options = quick();
        options.qmi = true;
        return options;
    }
    void start(const sim::ServerOptions &options = both()) { AtServer::start(options); }
    void restart(const sim::ServerOptions &options = both())
    {
        ASSERT_EQ(server->end(SIGTERM), 0);
        start(options);
    }

    static int requests() { return msgget(CMIF_QMI_REQUEST_KEY, IPC_CREAT | 0666); }
    static int replies() { return msgget(CMIF_QMI_REPLY_KEY, IPC_CREAT | 0666); }

    static void send(long code, const std::string &payload)
    {
        Request request{code};
        std::memcpy(request.payload, payload.data(), payload.size());
        ASSERT_EQ(msgsnd(requests(), &request, payload.size(), 0), 0);
    }
    static std::optional<std::string> reply(long code, std::chrono::milliseconds patience = 10s)
    {
        const auto end = std::chrono::steady_clock::now() + patience;
        do {
            Request record{};
            const ssize_t size =
                msgrcv(replies(), &record, sizeof record.payload, code, IPC_NOWAIT);
            if (size >= 0)
                return std::string(record.payload, static_cast<std::size_t>(size));
            std::this_thread::sleep_for(1ms);
        } while (std::chrono::steady_clock::now() < end);
        return std::nullopt;
    }
    // The number at the start of the reply, or -999.
    static int ask_qmi(long code, const std::string &payload = std::string(5, '\0'))
    {
        send(code, payload);
        const std::string bytes = reply(code).value_or("");
        std::int32_t number = -999;
        if (bytes.size() >= sizeof number)
            std::memcpy(&number, bytes.data(), sizeof number);
        return number;
    }
    static std::string wire_profile(const std::string &apn, const std::string &user = "",
                                    const std::string &password = "",
                                    const std::string &numbers = "000")
    {
        std::string bytes(CMIF_QMI_PAYLOAD, '\0');
        bytes.replace(0, apn.size(), apn);
        bytes.replace(41, user.size(), user);
        bytes.replace(170, password.size(), password);
        for (std::size_t i = 0; i < 3; ++i)
            bytes[299 + 4 * i] = numbers[i];
        return bytes;
    }
    static void set_profile(const std::string &apn)
    {
        ASSERT_EQ(ask_qmi(3, wire_profile(apn)), sim::ret_ok);
    }

    // Unlocks, and waits until it is registered.
    static void open()
    {
        unlock();
        ASSERT_TRUE(becomes("lte_network_reg_status_state", "1"));
    }
    static int state()
    {
        int state = -1;
        EXPECT_EQ(shared_CMIF_get_connection_status(&state), 0);
        return state;
    }
    static void connect()
    {
        set_profile("internet.example");
        open();
        ASSERT_EQ(ask_qmi(4), sim::ret_ok);
        ASSERT_TRUE(becomes("lte_qmi_connection_status", "3"));
    }
    static bool ready() { return read_file(CMIF_QMI_READY_FILE) == "on\n"; }
};

// ---- through the library ----

TEST_F(QmiDaemon, ConnectsAndDisconnects)
{
    start();
    EXPECT_EQ(state(), 1);
    EXPECT_EQ(shared_CMIF_start_network_interface(), 5); // no access point name is set
    qmi_profile profile{"internet.example", "me", "secret", 2, 3, 1};
    EXPECT_EQ(shared_CMIF_modify_profile_settings(profile, 0), 0);
    open();
    EXPECT_EQ(shared_CMIF_start_network_interface(), 0);
    ASSERT_TRUE(becomes("lte_qmi_connection_status", "3"));
    EXPECT_EQ(state(), 3);

    char text[100] = "";
    EXPECT_EQ(shared_CMIF_get_mobileIPv4_string(text), 0);
    EXPECT_STREQ(text, "192.0.2.10");
    EXPECT_EQ(shared_CMIF_get_mobileIPv6_string(text), 0);
    EXPECT_STREQ(text, "2001:db8:0:1::1");
    EXPECT_EQ(shared_CMIF_get_mobileNetworkAPN(text), 0);
    EXPECT_STREQ(text, "internet.example");

    EXPECT_EQ(shared_CMIF_stop_network_interface(), 0);
    ASSERT_TRUE(becomes("lte_qmi_connection_status", "1"));
    EXPECT_EQ(get("lte_ipv4_address") + get("lte_ipv6_address"), "");
    EXPECT_EQ(shared_CMIF_get_mobileLastKnownAPN(text), 0);
    EXPECT_STREQ(text, "internet.example");
}

TEST_F(QmiDaemon, CountsTheUptime)
{
    start();
    connect();
    EXPECT_TRUE(becomes("lte_qmi_connection_uptime", "1"));
    EXPECT_TRUE(becomes("lte_qmi_connection_uptime", "2"));
    unsigned int seconds = 0;
    EXPECT_EQ(shared_CMIF_get_connection_uptime(&seconds), 0);
    EXPECT_GE(seconds, 2U);
    EXPECT_EQ(ask_qmi(5), sim::ret_ok);
    EXPECT_EQ(get("lte_qmi_connection_uptime"), "0");
}

TEST_F(QmiDaemon, PublishesTheProfileThatTheLibrarySends)
{
    start();
    const std::string longest(128, 'x');
    qmi_profile profile{"", "", "", 1, 2, 1};
    fill(profile.apn, std::string(40, 'a'));
    fill(profile.user, longest);
    fill(profile.password, longest);
    EXPECT_EQ(shared_CMIF_modify_profile_settings(profile, 0), 0);
    EXPECT_EQ(get("lte_qmi_apn"), std::string(40, 'a'));
    EXPECT_EQ(get("lte_qmi_user"), longest);
    EXPECT_EQ(get("lte_qmi_password"), longest);

    qmi_profile back{};
    EXPECT_EQ(shared_CMIF_get_profile_settings(&back), 0);
    EXPECT_EQ(std::memcmp(&back, &profile, offsetof(qmi_profile, auth) - 1), 0);
    EXPECT_EQ(back.auth, 1);
    EXPECT_EQ(back.pdp, 2);
    EXPECT_EQ(back.curIpFamily, 1);
}

TEST_F(QmiDaemon, TellsRevisionServiceAndSim)
{
    start();
    char revision[101] = "", service[51] = "";
    EXPECT_EQ(shared_CMIF_get_device_rev_id(revision), 0);
    EXPECT_EQ(revision, get("lte_module_sw_ver"));
    EXPECT_EQ(shared_CMIF_get_ps_service(service), 0);
    EXPECT_STREQ(service, "detached");
    int status = -1;
    EXPECT_EQ(shared_CMIF_get_sim_status(&status), 0);
    EXPECT_EQ(status, 3);
    open();
    EXPECT_EQ(shared_CMIF_get_ps_service(service), 0);
    EXPECT_STREQ(service, "attached");
    EXPECT_EQ(ask(7, {"", "", "", "0"}), sim::ret_ok);
    EXPECT_EQ(shared_CMIF_get_ps_service(service), 0);
    EXPECT_STREQ(service, "detached");
}

// ---- one modem on both sides ----

TEST_F(QmiDaemon, SeesTheSimOfTheAtSide)
{
    start();
    EXPECT_EQ(ask_qmi(6), 3);
    unlock();
    EXPECT_EQ(ask_qmi(6), 2);
    const Fields lock{"1", "00102", sim::NetworkLock::control_key, "PN"};
    EXPECT_EQ(ask(10, lock), sim::ret_ok);
    EXPECT_EQ(ask_qmi(6), 5);
    EXPECT_EQ(ask(11, {sim::NetworkLock::control_key}), sim::ret_ok);
    EXPECT_EQ(ask_qmi(6), 2);
    for (int i = 0; i < 3; ++i)
        ask(12, {"0000"});
    EXPECT_EQ(ask_qmi(6), 4);
    for (int i = 0; i < 10; ++i)
        ask(14, {"00000000", "1234"});
    EXPECT_EQ(ask_qmi(6), 6);
    EXPECT_EQ(get("lte_sim_status"), "SIM FAILURE");
}

TEST_F(QmiDaemon, RefusesAStartThatCanNotSucceed)
{
    start();
    set_profile("internet.example");
    const auto refused = [](int code, const std::string &name) {
        EXPECT_EQ(ask_qmi(4), code);
        EXPECT_EQ(get("lte_qmi_last_error"), name);
        EXPECT_EQ(get("lte_qmi_connection_status"), "1");
    };
    refused(sim::ret_sim_pin_required, "sim_pin_required");
    open();
    EXPECT_EQ(set_functionality(4), sim::ret_ok);
    refused(sim::ret_not_allowed, "not_allowed");
    EXPECT_EQ(set_functionality(1), sim::ret_ok);
    ASSERT_TRUE(becomes("lte_network_reg_status_state", "1"));
    set_profile("");
    refused(sim::ret_missing_apn, "missing_apn");
    set_profile("internet.example");
    EXPECT_EQ(ask_qmi(4), sim::ret_ok);
    EXPECT_EQ(get("lte_qmi_last_error"), "");
}

TEST_F(QmiDaemon, RefusesAStartBeforeItIsRegistered)
{
    sim::ServerOptions options = both();
    options.pace = 100;
    start(options);
    set_profile("internet.example");
    unlock();
    EXPECT_EQ(ask_qmi(4), sim::ret_no_network_service);
    EXPECT_EQ(get("lte_qmi_last_error"), "no_network_service");
}

TEST_F(QmiDaemon, LosesTheConnectionWithTheRadio)
{
    start();
    connect();
    EXPECT_EQ(set_functionality(4), sim::ret_ok);
    EXPECT_EQ(get("lte_qmi_connection_status"), "1");
    EXPECT_EQ(get("lte_qmi_last_error"), "not_allowed");
    EXPECT_EQ(get("lte_ipv4_address"), "");
    EXPECT_EQ(set_functionality(1), sim::ret_ok);
    EXPECT_EQ(ask_qmi(4), sim::ret_ok);
    EXPECT_TRUE(becomes("lte_qmi_connection_status", "3"));
}

TEST_F(QmiDaemon, IsOnTheWayForAWhile)
{
    sim::ServerOptions options = both();
    options.pace = 0.3;
    start(options);
    const auto before = std::chrono::steady_clock::now();
    connect(); // registration and the way up, 0.9 s and 0.6 s
    EXPECT_GE(std::chrono::steady_clock::now() - before, 1500ms);
    EXPECT_EQ(ask_qmi(5), sim::ret_ok);
    EXPECT_EQ(get("lte_qmi_connection_status"), "2");
    EXPECT_TRUE(becomes("lte_qmi_connection_status", "1"));
    EXPECT_EQ(ask_qmi(4), sim::ret_ok);
    EXPECT_EQ(get("lte_qmi_connection_status"), "2");
    EXPECT_EQ(get("lte_ipv4_address"), "");
    EXPECT_TRUE(becomes("lte_qmi_connection_status", "3"));
    EXPECT_EQ(get("lte_ipv4_address"), "192.0.2.11"); // all is there when the state is
}

TEST_F(QmiDaemon, ReconnectsWithANewProfile)
{
    sim::ServerOptions options = both();
    options.pace = 0.2;
    start(options);
    connect();
    set_profile("other.example");
    EXPECT_EQ(get("lte_qmi_connection_status"), "2");
    EXPECT_EQ(get("lte_qmi_connection_uptime"), "0");
    EXPECT_TRUE(becomes("lte_qmi_connection_status", "3"));
    EXPECT_EQ(get("lte_pdp_apn"), "other.example");
}

// ---- across restarts ----

TEST_F(QmiDaemon, KeepsASavedProfile)
{
    start();
    ASSERT_EQ(ask_qmi(3, wire_profile("own.example", "me", "secret", "231")), sim::ret_ok);
    open();
    ASSERT_EQ(ask_qmi(4), sim::ret_ok);
    ASSERT_TRUE(becomes("lte_qmi_connection_status", "3"));
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
    open();
    EXPECT_EQ(ask_qmi(4), sim::ret_ok);
    EXPECT_TRUE(becomes("lte_pdp_apn", "own.example"));
}

TEST_F(QmiDaemon, ForgetsAProfileThatWasNotSaved)
{
    start();
    set_profile("own.example");
    restart();
    EXPECT_EQ(get("lte_qmi_apn"), "");
    EXPECT_EQ(get("lte_qmi_auth"), "0");
}

TEST_F(QmiDaemon, TakesSavedValuesOutOfRangeAsUnset)
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

TEST_F(QmiDaemon, LeavesWaitTimesThatSomebodyChose)
{
    set("lte_qmi_wait_time_after_restart", "30");
    ASSERT_EQ(tarnNvramConfig_save(), 0);
    start();
    EXPECT_EQ(get("lte_qmi_wait_time_before_restart"), "5");
    EXPECT_EQ(get("lte_qmi_wait_time_after_restart"), "30");
}

TEST_F(QmiDaemon, ConnectsByItselfWhenItIsToldTo)
{
    start();
    set_profile("own.example");
    EXPECT_EQ(shared_CMIF_set_auto_connect_when_start_up(1), 0); // saves
    open();
    EXPECT_EQ(get("lte_qmi_connection_status"), "1"); // a matter of the start
    restart();
    EXPECT_EQ(get("lte_qmi_connection_status"), "1");
    unlock();
    EXPECT_TRUE(becomes("lte_qmi_connection_status", "3"));
    EXPECT_EQ(shared_CMIF_set_auto_connect_when_start_up(0), 0);
    restart();
    open();
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(get("lte_qmi_connection_status"), "1");
}

// ---- records ----

TEST_F(QmiDaemon, AnswersEveryRequestOfTheChannelButOne)
{
    start();
    for (const long code : {1L, 3L, 4L, 5L, 6L, 8L}) {
        send(code, std::string(5, '\0'));
        EXPECT_EQ(reply(code).value_or("").size(), 312U) << code;
    }
    send(9, std::string(5, '\0'));
    EXPECT_EQ(ask_qmi(6), 3); // served behind it
    EXPECT_EQ(reply(9, 50ms), std::nullopt);
}

TEST_F(QmiDaemon, ThePayloadIsZeroBehindTheAnswer)
{
    start();
    send(3, wire_profile("own.example", "me", "secret"));
    EXPECT_EQ(reply(3), std::string(312, '\0')); // and carries no password back
    send(1, std::string(101, '\xff'));
    const std::string revision = get("lte_module_sw_ver");
    EXPECT_EQ(reply(1), revision + std::string(312 - revision.size(), '\0'));
}

TEST_F(QmiDaemon, RefusesUnknownRequests)
{
    start();
    for (const long code : {2L, 7L, 10L, 1158L, 2147483647L})
        EXPECT_EQ(ask_qmi(code), sim::ret_not_supported) << code;
}

TEST_F(QmiDaemon, ServesRequestsWithoutArgumentsWhateverTheySize)
{
    start();
    for (const unsigned size : {0U, 1U, 101U, 312U, 316U, 4000U})
        EXPECT_EQ(ask_qmi(6, std::string(size, '\xff')), 3) << size;
}

TEST_F(QmiDaemon, RefusesMalformedProfiles)
{
    start();
    set_profile("own.example");
    const std::string good = wire_profile("new.example", "me", "secret", "231");
    const auto refused = [](const std::string &payload) {
        EXPECT_EQ(ask_qmi(3, payload), sim::ret_incorrect_parameters);
        EXPECT_EQ(get("lte_qmi_apn"), "own.example");
        EXPECT_EQ(get("lte_qmi_user") + get("lte_qmi_password"), "");
    };
    refused("");
    refused(good.substr(0, 311));
    refused(good + '\0');
    refused(std::string(4000, 'x'));
    refused(std::string(312, '\xff'));
    for (const auto &[begin, size] : {std::pair<int, int>{0, 41}, {41, 129}, {170, 129}}) {
        std::string endless = good;
        endless.replace(static_cast<std::size_t>(begin), static_cast<std::size_t>(size),
                        std::string(static_cast<std::size_t>(size), 'x'));
        refused(endless);
    }
    for (const char *numbers : {"431", "241", "232", "/31", "2 1"})
        refused(wire_profile("new.example", "", "", numbers));
    for (const std::size_t digit : {299U, 303U, 307U}) {
        std::string changed = good;
        changed[digit] = '\0';
        refused(changed);
        changed = good;
        changed[digit + 1] = '1';
        refused(changed);
    }
    std::string last = good;
    last[311] = 'x'; // carries nothing
    EXPECT_EQ(ask_qmi(3, last), sim::ret_ok);
    EXPECT_EQ(get("lte_qmi_apn"), "new.example");
}

TEST_F(QmiDaemon, PublishesBeforeItReplies)
{
    start();
    for (int i = 0; i < 100; ++i) {
        const std::string apn = "apn" + std::to_string(i);
        set_profile(apn);
        ASSERT_EQ(get("lte_qmi_apn"), apn);
    }
}

TEST_F(QmiDaemon, FindsQueuesThatWereRemoved)
{
    start();
    msgctl(requests(), IPC_RMID, nullptr);
    EXPECT_EQ(ask_qmi(6), 3);
    msgctl(replies(), IPC_RMID, nullptr);
    EXPECT_EQ(ask_qmi(6), 3);
}

TEST_F(QmiDaemon, ServesWhatWasQueuedBeforeItsStart)
{
    send(6, std::string(5, '\0'));
    start();
    EXPECT_NE(reply(6), std::nullopt);
}

// Fills the reply queue with what nobody waits for.
void fill_replies(int queue)
{
    const qmi_msg record{99, ""};
    while (msgsnd(queue, &record, CMIF_QMI_PAYLOAD, IPC_NOWAIT) == 0) {}
}

TEST_F(QmiDaemon, WaitsForRoomInTheReplyQueueAndTheAtSideGoesOn)
{
    start();
    fill_replies(replies());
    send(6, std::string(5, '\0'));
    EXPECT_EQ(reply(6, 50ms), std::nullopt);
    unlock();
    EXPECT_NE(reply(99), std::nullopt);
    EXPECT_NE(reply(6), std::nullopt);
}

TEST_F(QmiDaemon, EndsThoughTheReplyQueueIsFull)
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

TEST_F(QmiDaemon, TheMarkerIsForEverybodyToReadAndAloneInItsPlace)
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

TEST_F(QmiDaemon, WhatAKilledServerLeavesIsNoObstacle)
{
    start();
    EXPECT_EQ(server->end(SIGKILL), 128 + SIGKILL);
    EXPECT_TRUE(ready()); // nobody could take it away
    start();
    EXPECT_TRUE(ready());
    EXPECT_EQ(ask_qmi(6), 3);
    EXPECT_EQ(server->end(SIGTERM), 0);
    EXPECT_FALSE(file_exists(CMIF_QMI_READY_FILE));
}

TEST_F(QmiDaemon, RefusesToStartTwiceAndKeepsTheOthersMarker)
{
    start();
    sim::ServerOptions options = both();
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

TEST_F(QmiDaemon, RunsWithoutTheAtDaemonAndTheOtherWayRound)
{
    sim::ServerOptions options = both();
    options.at = false;
    start(options);
    EXPECT_EQ(ask_qmi(6), 3);
    AtServer::send(record_of(4, {}));
    EXPECT_EQ(AtServer::reply(4, 50ms), std::nullopt);
    restart(quick());
    EXPECT_FALSE(file_exists(CMIF_QMI_READY_FILE));
    EXPECT_EQ(ask(4), sim::ret_ok);
    send(6, std::string(5, '\0'));
    EXPECT_EQ(reply(6, 50ms), std::nullopt);
}

TEST_F(QmiDaemon, PrintsEachRecordWithoutPasswords)
{
    sim::ServerOptions options = both();
    options.verbose = true;
    options.at = false;
    start(options);
    ask_qmi(1);
    ask_qmi(3, wire_profile("own.example", "me\x1b[2J", "secret", "231"));
    ask_qmi(3, std::string(312, 's'));
    ask_qmi(4);
    ask_qmi(5);
    ask_qmi(6);
    ask_qmi(7);
    ask_qmi(8);
    send(9, "");
    ask_qmi(6);
    ASSERT_EQ(server->end(SIGTERM), 0);
    EXPECT_EQ(server->errors(),
              "QMI -> 1 shared_CMIF_get_device_rev_id\n"
              "QMI <- 1 shared_CMIF_get_device_rev_id \"SIMFW_01.02.03\"\n"
              "QMI -> 3 shared_CMIF_modify_profile_settings apn=\"own.example\" user=\"me?[2J\" "
              "password=\"****\" auth=2 pdp=3 family=1\n"
              "QMI <- 3 shared_CMIF_modify_profile_settings ret_code=0 (ok)\n"
              "QMI -> 3 shared_CMIF_modify_profile_settings (malformed)\n"
              "QMI <- 3 shared_CMIF_modify_profile_settings ret_code=50 (incorrect_parameters)\n"
              "QMI -> 4 shared_CMIF_start_network_interface\n"
              "QMI <- 4 shared_CMIF_start_network_interface ret_code=11 (sim_pin_required)\n"
              "QMI -> 5 shared_CMIF_stop_network_interface\n"
              "QMI <- 5 shared_CMIF_stop_network_interface ret_code=0 (ok)\n"
              "QMI -> 6 shared_CMIF_get_sim_status\n"
              "QMI <- 6 shared_CMIF_get_sim_status status=3\n"
              "QMI -> 7 unknown request\n"
              "QMI <- 7 unknown request ret_code=204 (not_supported)\n"
              "QMI -> 8 shared_CMIF_get_ps_service\n"
              "QMI <- 8 shared_CMIF_get_ps_service \"detached\"\n"
              "QMI -> 9 shared_CMIF_set_CM_qfirehose\n"
              "QMI -> 6 shared_CMIF_get_sim_status\n"
              "QMI <- 6 shared_CMIF_get_sim_status status=3\n");
}

} // namespace
