// How each request changes the simulated modem, and what is published.
#include "modems/simulated/network_lock.h"
#include "tests/support/at_server.h"

namespace
{

using namespace std::chrono_literals;

constexpr const char *control_key = simulated::NetworkLock::control_key;

using AtRequests = AtServer;

TEST_F(AtRequests, PublishesTheLockedDefaultModemAtItsStart)
{
    start();
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
    EXPECT_EQ(get("lte_sim_pin_mode"), "1");
    EXPECT_EQ(get("lte_mobile_pin1c"), "3");
    EXPECT_EQ(get("lte_mobile_puk1c"), "10");
    EXPECT_EQ(get("lte_mobile_pin2c"), "3");
    EXPECT_EQ(get("lte_mobile_puk2c"), "10");
    EXPECT_EQ(get("lte_mobile_imei"), "001010012345672");
    EXPECT_EQ(get("lte_mobile_iccid"), "8900101123456789016");
    EXPECT_EQ(get("lte_mobile_imsi"), "");
    EXPECT_EQ(get("lte_subscriber_num_number"), "");
    EXPECT_EQ(get("lte_network_reg_status_state"), "0");
    EXPECT_EQ(get("lte_query_network_rssi"), "");
    EXPECT_EQ(get("lte_mobile_sms_counts"), "0");
}

TEST_F(AtRequests, UnlockedItRegistersAndShowsEverything)
{
    start();
    unlock();
    const std::pair<const char *, const char *> values[] = {
        {"lte_sim_status", "READY"},
        {"lte_mobile_imsi", "001010123456789"},
        {"lte_subscriber_num_number", "+12025550100"},
        {"lte_module_hw_ver", "CMIF-SIM LTE R1"},
        {"lte_module_sw_ver", "SIMFW_01.02.03"},
        {"lte_network_reg_status_state", "1"},
        {"lte_network_reg_status_lac", "1A2B"},
        {"lte_network_reg_status_last_lac", "1A2B"},
        {"lte_query_network_mcc", "001"},
        {"lte_query_network_last_mcc", "001"},
        {"lte_query_network_mnc", "01"},
        {"lte_query_network_last_mnc", "01"},
        {"lte_query_network_cellid", "01A2D003"},
        {"lte_query_network_last_cellid", "01A2D003"},
        {"lte_query_network_info_band", "LTE BAND 3"},
        {"lte_query_network_info_channel", "1300"},
        {"lte_query_network_info_access_technology_select", "LTE"},
        {"lte_query_network_duplexmode", "FDD"},
        {"lte_operator_select_operator", "Test Network"},
        {"lte_operator_select_operator_longname", "Test Network"},
        {"lte_operator_select_operator_shortname", "Test"},
        {"lte_operator_select_operator_plmnname", "00101"},
        {"lte_operator_select_ats_value", "7"},
        {"lte_operator_select_network_mode", "0"},
        {"lte_network_search_mode", "0"},
        {"lte_roam_servive_config", "255"},
        {"lte_pocket_domain_servive_status", "1"},
        {"lte_pdp_type", "IPV4V6"},
        {"lte_pdp_apn", "internet.example"},
        {"lte_pdp_last_apn", "internet.example"},
        {"lte_ipv4_address", ""},
        {"lte_ipv6_address", ""},
    };
    for (const auto &[key, value] : values)
        EXPECT_EQ(get(key), value) << key;
    EXPECT_NEAR(std::stoi(get("lte_query_network_rssi")), -63, 6);
    EXPECT_NEAR(std::stoi(get("lte_mobile_rssi_id_to_dbm")), -63, 7);
    EXPECT_NEAR(std::stoi(get("lte_query_network_rsrp")), -92, 6);
    EXPECT_NEAR(std::stoi(get("lte_query_network_rsrq")), -9, 2);
    EXPECT_NEAR(std::stoi(get("lte_query_network_sinr")), 15, 4);
}

TEST_F(AtRequests, OutOfRangeValuesAreRefused)
{
    start();
    unlock();
    const std::pair<long, const char *> values[] = {
        {2, ""},  {2, "4"}, {2, "-1"}, {2, "1x"}, {3, ""},  {3, "1"},   {7, ""},
        {7, "2"}, {15, ""}, {15, "0"}, {15, "3"}, {16, ""}, {16, "-1"}, {16, "3"}};
    for (const auto &[code, value] : values)
        EXPECT_EQ(ask(code, {"", "", "", value}), answer::incorrect_parameters)
            << code << " " << value;
    EXPECT_EQ(ask(9, {"2", "1234"}), answer::incorrect_parameters);
    EXPECT_EQ(get("lte_network_search_mode"), "0");
    EXPECT_EQ(get("lte_mobile_pin1c"), "3");
}

TEST_F(AtRequests, PinEntryUpToThePukAndBack)
{
    start();
    EXPECT_EQ(ask(12, {"0000"}), answer::incorrect_password);
    EXPECT_EQ(get("lte_mobile_pin1c"), "2");
    EXPECT_EQ(ask(12, {"0000"}), answer::incorrect_password);
    EXPECT_EQ(ask(12, {"0000"}), answer::sim_puk_required);
    EXPECT_EQ(get("lte_mobile_pin1c"), "0");
    EXPECT_EQ(get("lte_sim_status"), "SIM PUK");
    EXPECT_EQ(ask(12, {"1234"}), answer::sim_puk_required);
    EXPECT_EQ(ask(14, {"00000000", "4321"}), answer::incorrect_password);
    EXPECT_EQ(get("lte_mobile_puk1c"), "9");
    EXPECT_EQ(ask(14, {"12345678", "4321"}), answer::ok);
    EXPECT_EQ(get("lte_mobile_pin1c"), "3");
    EXPECT_EQ(get("lte_mobile_puk1c"), "10");
    EXPECT_EQ(get("lte_sim_status"), "READY");
    EXPECT_EQ(get("lte_network_reg_status_state"), "1");
}

TEST_F(AtRequests, PublishesAPermanentlyBlockedCard)
{
    start();
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(ask(14, {"00000000", "1234"}), answer::incorrect_password);
    EXPECT_EQ(ask(14, {"00000000", "1234"}), answer::sim_failure);
    EXPECT_EQ(get("lte_sim_status"), "SIM FAILURE");
    EXPECT_EQ(get("lte_mobile_puk1c"), "0");
}

TEST_F(AtRequests, PinModeAndPinChange)
{
    start();
    EXPECT_EQ(ask(9, {"0", "1234"}), answer::sim_pin_required);
    EXPECT_EQ(ask(13, {"1234", "4321"}), answer::sim_pin_required);
    unlock();
    EXPECT_EQ(ask(13, {"1234", "4321"}), answer::ok);
    EXPECT_EQ(ask(9, {"0", "1234"}), answer::incorrect_password);
    EXPECT_EQ(ask(9, {"0", "4321"}), answer::ok);
    EXPECT_EQ(ask(8), answer::ok);
    EXPECT_EQ(get("lte_sim_pin_mode"), "0");
    EXPECT_EQ(ask(9, {"1", "4321"}), answer::ok);
    EXPECT_EQ(get("lte_sim_pin_mode"), "1");
}

TEST_F(AtRequests, NetworkLock)
{
    start();
    EXPECT_EQ(ask(10, {"1", "00102", control_key, "PN"}), answer::sim_pin_required);
    unlock();
    EXPECT_EQ(ask(10, {"1", "00102", "00000000", "PN"}), answer::incorrect_password);
    EXPECT_EQ(ask(10, {"1", "00102", control_key, "PN"}), answer::ok);
    EXPECT_EQ(get("lte_sim_status"), "PH-NET PIN");
    EXPECT_EQ(get("lte_network_reg_status_state"), "0");
    EXPECT_EQ(ask(24), answer::network_pin_required);
    EXPECT_EQ(ask(11, {"00000000"}), answer::incorrect_password);
    EXPECT_EQ(ask(11, {control_key}), answer::ok);
    EXPECT_EQ(get("lte_sim_status"), "READY");
    EXPECT_EQ(get("lte_network_reg_status_state"), "1");
}

TEST_F(AtRequests, Settings)
{
    start();
    unlock();
    EXPECT_EQ(ask(7, {"", "", "", "0"}), answer::ok);
    EXPECT_EQ(ask(6), answer::ok);
    EXPECT_EQ(get("lte_pocket_domain_servive_status"), "0");
    for (const char *roaming : {"1", "2", "255"}) {
        EXPECT_EQ(ask(15, {"", "", "", roaming}), answer::ok);
        EXPECT_EQ(get("lte_roam_servive_config"), roaming);
    }
    const std::pair<const char *, const char *> formats[] = {
        {"1", "Test"}, {"2", "00101"}, {"0", "Test Network"}};
    for (const auto &[format, name] : formats) {
        EXPECT_EQ(ask(16, {"", "", "", format}), answer::ok);
        EXPECT_EQ(get("lte_operator_select_operator"), name);
    }
    EXPECT_EQ(ask(1), answer::ok);
}

TEST_F(AtRequests, QueriesRestoreOverwrittenKeys)
{
    start();
    set("lte_sim_pin_mode", "?");
    EXPECT_EQ(ask(8), answer::ok);
    EXPECT_EQ(get("lte_sim_pin_mode"), "1");
}

TEST_F(AtRequests, SearchModeOnOtherTechnologies)
{
    start();
    unlock();
    EXPECT_EQ(ask(2, {"", "", "", "1"}), answer::ok);
    EXPECT_EQ(get("lte_operator_select_ats_value"), "0");
    EXPECT_EQ(get("lte_query_network_info_access_technology_select"), "GSM");
    EXPECT_EQ(get("lte_query_network_rsrp"), "");
    EXPECT_EQ(get("lte_query_network_duplexmode"), "");
    EXPECT_EQ(get("lte_network_reg_status_state"), "5");
    EXPECT_EQ(ask(2, {"", "", "", "2"}), answer::ok);
    EXPECT_EQ(get("lte_operator_select_ats_value"), "2");
    EXPECT_EQ(get("lte_query_network_info_access_technology_select"), "UMTS");
}

TEST_F(AtRequests, OperatorSelection)
{
    start();
    EXPECT_EQ(ask(17, {"00102", "7"}), answer::sim_pin_required);
    unlock();
    EXPECT_EQ(ask(17, {"00102", "7"}), answer::ok);
    EXPECT_EQ(get("lte_operator_select_operator"), "Second Test Network");
    EXPECT_EQ(get("lte_operator_select_network_mode"), "1");
    EXPECT_EQ(ask(17, {"00103", "7"}), answer::network_not_allowed);
    EXPECT_EQ(ask(17, {"00199", "7"}), answer::no_network_service);
    EXPECT_EQ(ask(3, {"", "", "", "0"}), answer::ok);
    EXPECT_EQ(get("lte_operator_select_operator"), "Test Network");
    EXPECT_EQ(get("lte_operator_select_network_mode"), "0");
}

TEST_F(AtRequests, RegistrationTakesTime)
{
    cmif_sim::ServerOptions options = quick();
    options.pace = 0.1;
    start(options);
    unlock();
    EXPECT_EQ(get("lte_network_reg_status_state"), "2");
    EXPECT_EQ(get("lte_operator_select_operator"), "");
    EXPECT_TRUE(eventually_equals("lte_network_reg_status_state", "1"));
    EXPECT_EQ(get("lte_operator_select_operator"), "Test Network");
}

TEST_F(AtRequests, OfflineClearsAndKeepsTheLastKnown)
{
    start();
    unlock();
    EXPECT_EQ(set_functionality(4), answer::ok);
    for (const char *key : {"lte_query_network_mcc", "lte_query_network_rssi",
                            "lte_operator_select_operator", "lte_operator_select_ats_value"})
        EXPECT_EQ(get(key), "") << key;
    EXPECT_EQ(get("lte_network_reg_status_state"), "0");
    EXPECT_EQ(get("lte_query_network_last_mcc"), "001");
    EXPECT_EQ(get("lte_query_network_last_cellid"), "01A2D003");
    EXPECT_EQ(ask(24), answer::not_allowed);
    EXPECT_EQ(ask(17, {"00102", "7"}), answer::not_allowed);
    EXPECT_EQ(set_functionality(0), answer::ok);
    EXPECT_EQ(set_functionality(2), answer::incorrect_parameters);
    EXPECT_EQ(set_functionality(255), answer::incorrect_parameters);
    EXPECT_EQ(set_functionality(1), answer::ok);
    EXPECT_EQ(get("lte_network_reg_status_state"), "1");
}

TEST_F(AtRequests, TheSignalMoves)
{
    start();
    unlock();
    const std::string first = get("lte_query_network_rsrp");
    bool moved = false;
    for (int i = 0; i < 500 && !moved; ++i) {
        std::this_thread::sleep_for(10ms);
        moved = get("lte_query_network_rsrp") != first;
    }
    EXPECT_TRUE(moved);
}

TEST_F(AtRequests, ProfileSessionAndSynchronization)
{
    start();
    EXPECT_EQ(ask(26), answer::sim_pin_required);
    EXPECT_EQ(ask(25, {"IP", "own.example", "", "3"}), answer::ok);
    EXPECT_EQ(get("lte_pdp_type"), "IP");
    EXPECT_EQ(get("lte_pdp_apn"), "own.example");
    EXPECT_EQ(ask(25, {"IP", "own.example", "", "x"}), answer::incorrect_parameters);
    unlock();
    EXPECT_EQ(get("lte_pdp_last_apn"), "own.example");
    EXPECT_EQ(ask(26), answer::ok);
    EXPECT_EQ(get("lte_pdp_apn"), "own.example");
    EXPECT_EQ(ask(27), answer::ok);
    EXPECT_EQ(get("lte_pdp_apn"), "managed.example");
}

TEST_F(AtRequests, AFactoryResetPublishesTheDefaultModem)
{
    start();
    unlock();
    const auto fresh_keys = [] {
        auto keys = all();
        std::erase_if(
            keys, [](const auto &entry) { return entry.first.find("sms") != std::string::npos; });
        return keys;
    };
    ASSERT_EQ(ask(21), answer::ok);
    const auto first = fresh_keys();
    EXPECT_EQ(get("lte_sim_status"), "SIM PIN");
    unlock();
    EXPECT_EQ(ask(18), answer::ok);
    EXPECT_EQ(ask(24), answer::ok);
    EXPECT_EQ(ask(2, {"", "", "", "3"}), answer::ok);
    EXPECT_EQ(ask(16, {"", "", "", "2"}), answer::ok);
    EXPECT_EQ(ask(17, {"00102", "7"}), answer::ok);
    EXPECT_EQ(ask(21), answer::ok);
    EXPECT_EQ(fresh_keys(), first);
    EXPECT_EQ(get("lte_mobile_sms_counts"), "0");
    EXPECT_EQ(get("lte_mobile_sms_text_1"), "");
    EXPECT_FALSE(std::filesystem::exists(CMIF_PROVIDER_LIST_FILE));
}

} // namespace
