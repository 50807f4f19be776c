// The QMI daemon's connection, as the library's callers and the store see it.
#include "tests/support/qmi_server.h"

namespace
{

using namespace std::chrono_literals;

using QmiDaemon = QmiServer;

int state()
{
    int state = -1;
    EXPECT_EQ(shared_CMIF_get_connection_status(&state), 0);
    return state;
}

TEST_F(QmiDaemon, ConnectsAndDisconnects)
{
    start();
    EXPECT_EQ(state(), 1);
    EXPECT_EQ(shared_CMIF_start_network_interface(), 5); // no access point name is set
    qmi_profile profile{"internet.example", "me", "secret", 2, 3, 1};
    EXPECT_EQ(shared_CMIF_modify_profile_settings(profile, 0), 0);
    unlock_and_register();
    EXPECT_EQ(shared_CMIF_start_network_interface(), 0);
    ASSERT_TRUE(eventually_equals("lte_qmi_connection_status", "3"));
    EXPECT_EQ(state(), 3);

    char text[100] = "";
    EXPECT_EQ(shared_CMIF_get_mobileIPv4_string(text), 0);
    EXPECT_STREQ(text, "192.0.2.10");
    EXPECT_EQ(shared_CMIF_get_mobileIPv6_string(text), 0);
    EXPECT_STREQ(text, "2001:db8:0:1::1");
    EXPECT_EQ(shared_CMIF_get_mobileNetworkAPN(text), 0);
    EXPECT_STREQ(text, "internet.example");

    EXPECT_EQ(shared_CMIF_stop_network_interface(), 0);
    ASSERT_TRUE(eventually_equals("lte_qmi_connection_status", "1"));
    EXPECT_EQ(get("lte_ipv4_address") + get("lte_ipv6_address"), "");
    EXPECT_EQ(shared_CMIF_get_mobileLastKnownAPN(text), 0);
    EXPECT_STREQ(text, "internet.example");
}

TEST_F(QmiDaemon, CountsTheUptime)
{
    start();
    connect();
    EXPECT_TRUE(eventually_equals("lte_qmi_connection_uptime", "1"));
    EXPECT_TRUE(eventually_equals("lte_qmi_connection_uptime", "2"));
    unsigned int seconds = 0;
    EXPECT_EQ(shared_CMIF_get_connection_uptime(&seconds), 0);
    EXPECT_GE(seconds, 2U);
    EXPECT_EQ(ask_qmi(5), answer::ok);
    EXPECT_EQ(get("lte_qmi_connection_uptime"), "0");
}

TEST_F(QmiDaemon, TransitionsTakeTime)
{
    cmif_sim::ServerOptions options = both();
    options.pace = 0.3;
    start(options);
    const auto before = std::chrono::steady_clock::now();
    connect(); // registration and the way up, 0.9 s and 0.6 s
    EXPECT_GE(std::chrono::steady_clock::now() - before, 1500ms);
    EXPECT_EQ(ask_qmi(5), answer::ok);
    EXPECT_EQ(get("lte_qmi_connection_status"), "2");
    EXPECT_TRUE(eventually_equals("lte_qmi_connection_status", "1"));
    EXPECT_EQ(ask_qmi(4), answer::ok);
    EXPECT_EQ(get("lte_qmi_connection_status"), "2");
    EXPECT_EQ(get("lte_ipv4_address"), "");
    EXPECT_TRUE(eventually_equals("lte_qmi_connection_status", "3"));
    EXPECT_EQ(get("lte_ipv4_address"), "192.0.2.11"); // published before the state
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
    refused(answer::sim_pin_required, "sim_pin_required");
    unlock_and_register();
    EXPECT_EQ(set_functionality(4), answer::ok);
    refused(answer::not_allowed, "not_allowed");
    EXPECT_EQ(set_functionality(1), answer::ok);
    ASSERT_TRUE(eventually_equals("lte_network_reg_status_state", "1"));
    set_profile("");
    refused(answer::missing_apn, "missing_apn");
    set_profile("internet.example");
    EXPECT_EQ(ask_qmi(4), answer::ok);
    EXPECT_EQ(get("lte_qmi_last_error"), "");
}

TEST_F(QmiDaemon, RefusesAStartBeforeItIsRegistered)
{
    cmif_sim::ServerOptions options = both();
    options.pace = 100;
    start(options);
    set_profile("internet.example");
    unlock();
    EXPECT_EQ(ask_qmi(4), answer::no_network_service);
    EXPECT_EQ(get("lte_qmi_last_error"), "no_network_service");
}

TEST_F(QmiDaemon, LosesTheConnectionWithTheRadio)
{
    start();
    connect();
    EXPECT_EQ(set_functionality(4), answer::ok);
    EXPECT_EQ(get("lte_qmi_connection_status"), "1");
    EXPECT_EQ(get("lte_qmi_last_error"), "not_allowed");
    EXPECT_EQ(get("lte_ipv4_address"), "");
    EXPECT_EQ(set_functionality(1), answer::ok);
    EXPECT_EQ(ask_qmi(4), answer::ok);
    EXPECT_TRUE(eventually_equals("lte_qmi_connection_status", "3"));
}

TEST_F(QmiDaemon, ReconnectsWithANewProfile)
{
    cmif_sim::ServerOptions options = both();
    options.pace = 0.2;
    start(options);
    connect();
    set_profile("other.example");
    EXPECT_EQ(get("lte_qmi_connection_status"), "2");
    EXPECT_EQ(get("lte_qmi_connection_uptime"), "0");
    EXPECT_TRUE(eventually_equals("lte_qmi_connection_status", "3"));
    EXPECT_EQ(get("lte_pdp_apn"), "other.example");
}

TEST_F(QmiDaemon, ConnectsAutomaticallyWhenConfigured)
{
    start();
    set_profile("own.example");
    EXPECT_EQ(shared_CMIF_set_auto_connect_when_start_up(1), 0); // saves
    unlock_and_register();
    EXPECT_EQ(get("lte_qmi_connection_status"), "1"); // a matter of the start
    restart();
    EXPECT_EQ(get("lte_qmi_connection_status"), "1");
    unlock();
    EXPECT_TRUE(eventually_equals("lte_qmi_connection_status", "3"));
    EXPECT_EQ(shared_CMIF_set_auto_connect_when_start_up(0), 0);
    restart();
    unlock_and_register();
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(get("lte_qmi_connection_status"), "1");
}

} // namespace
