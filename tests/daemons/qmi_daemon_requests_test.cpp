// How the QMI daemon serves each request, and the records that it replies with.
#include "modems/simulated/network_lock.h"
#include "tests/support/qmi_server.h"

namespace
{

using namespace std::chrono_literals;

using QmiDaemon = QmiServer;

TEST_F(QmiDaemon, AnswersEveryRequestOfTheChannelButOne)
{
    start();
    for (const long code : {1L, 3L, 4L, 5L, 6L, 8L}) {
        send(code, std::string(5, '\0'));
        EXPECT_EQ(reply(code).value_or("").size(), 312U) << code;
    }
    send(9, std::string(5, '\0'));
    EXPECT_EQ(ask_qmi(6), 3); // served after it
    EXPECT_EQ(reply(9, 50ms), std::nullopt);
}

TEST_F(QmiDaemon, ThePayloadIsZeroAfterTheAnswer)
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
        EXPECT_EQ(ask_qmi(code), answer::not_supported) << code;
}

TEST_F(QmiDaemon, ServesRequestsWithoutArgumentsOfAnySize)
{
    start();
    for (const unsigned size : {0U, 1U, 101U, 312U, 316U, 4000U})
        EXPECT_EQ(ask_qmi(6, std::string(size, '\xff')), 3) << size;
}

TEST_F(QmiDaemon, ReportsRevisionServiceAndSim)
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
    unlock_and_register();
    EXPECT_EQ(shared_CMIF_get_ps_service(service), 0);
    EXPECT_STREQ(service, "attached");
    EXPECT_EQ(ask(7, {"", "", "", "0"}), answer::ok);
    EXPECT_EQ(shared_CMIF_get_ps_service(service), 0);
    EXPECT_STREQ(service, "detached");
}

TEST_F(QmiDaemon, SharesTheSimWithTheAtDaemon)
{
    start();
    EXPECT_EQ(ask_qmi(6), 3);
    unlock();
    EXPECT_EQ(ask_qmi(6), 2);
    const Fields lock{"1", "00102", simulated::NetworkLock::control_key, "PN"};
    EXPECT_EQ(ask(10, lock), answer::ok);
    EXPECT_EQ(ask_qmi(6), 5);
    EXPECT_EQ(ask(11, {simulated::NetworkLock::control_key}), answer::ok);
    EXPECT_EQ(ask_qmi(6), 2);
    for (int i = 0; i < 3; ++i)
        ask(12, {"0000"});
    EXPECT_EQ(ask_qmi(6), 4);
    for (int i = 0; i < 10; ++i)
        ask(14, {"00000000", "1234"});
    EXPECT_EQ(ask_qmi(6), 6);
    EXPECT_EQ(get("lte_sim_status"), "SIM FAILURE");
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

TEST_F(QmiDaemon, RefusesMalformedProfiles)
{
    start();
    set_profile("own.example");
    const std::string good = wire_profile("new.example", "me", "secret", "231");
    const auto refused = [](const std::string &payload) {
        EXPECT_EQ(ask_qmi(3, payload), answer::incorrect_parameters);
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
    EXPECT_EQ(ask_qmi(3, last), answer::ok);
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

TEST_F(QmiDaemon, PrintsEachRecordWithoutPasswords)
{
    cmif_sim::ServerOptions options = both();
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
