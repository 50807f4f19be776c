// The fields of the AT requests: texts that are not values are refused before the modem sees them.
#include "modems/simulated/network_lock.h"
#include "tests/support/at_server.h"

namespace
{

constexpr const char *key = simulated::NetworkLock::control_key;

class AtFields : public AtServer
{
protected:
    AtFields()
    {
        start();
        unlock();
    }
};

TEST_F(AtFields, OddIndexesAndFlagsDeleteNothing)
{
    for (const char *odd : {"", "x", "5 ", "-1", "99999999999999999999"}) {
        EXPECT_EQ(ask(19, {"5", odd}), answer::incorrect_parameters) << odd;
        EXPECT_NE(ask(19, {odd, "0"}), answer::ok) << odd;
    }
    EXPECT_EQ(ask(19, {"5", "5"}), answer::incorrect_parameters);
    EXPECT_EQ(ask(18), answer::ok);
    EXPECT_EQ(get("lte_mobile_sms_counts"), "6");
}

TEST_F(AtFields, ProfilesHaveANumberAndAType)
{
    for (const char *number : {"", "0", "17", "-1", "x"})
        EXPECT_EQ(ask(25, {"IP", "a", "", number}), answer::incorrect_parameters) << number;
    for (const char *type : {"", "ip", "IPV4"})
        EXPECT_EQ(ask(25, {type, "a", "", "3"}), answer::incorrect_parameters) << type;
    EXPECT_EQ(ask(25, {"IP", "", "", "16"}), answer::ok);
    EXPECT_EQ(get("lte_pdp_apn"), "internet.example");
    for (const char *type : {"IP", "PPP", "IPV6", "IPV4V6"}) {
        EXPECT_EQ(ask(25, {type, "a", "", "3"}), answer::ok);
        EXPECT_EQ(get("lte_pdp_type"), type);
    }
}

TEST_F(AtFields, OperatorsHaveACodeAndATechnology)
{
    for (const char *numeric : {"", "0010", "0010100", "0010a"})
        EXPECT_EQ(ask(17, {numeric, "7"}), answer::incorrect_parameters) << numeric;
    for (const char *technology : {"8", "-1", "LTE", "7 "})
        EXPECT_EQ(ask(17, {"00101", technology}), answer::incorrect_parameters) << technology;
    EXPECT_EQ(get("lte_operator_select_network_mode"), "0");
    EXPECT_EQ(ask(17, {"00101", ""}), answer::ok);
    EXPECT_EQ(get("lte_operator_select_network_mode"), "1");
}

TEST_F(AtFields, TheNetworkLockHasOneFacilityAndTwoModes)
{
    EXPECT_EQ(ask(10, {"1", "00102", key, "PP"}), answer::not_supported);
    EXPECT_EQ(ask(10, {"1", "00102", key, ""}), answer::not_supported);
    EXPECT_EQ(ask(10, {"2", "00102", key, "PN"}), answer::incorrect_parameters);
    EXPECT_EQ(ask(10, {"", "00102", key, "PN"}), answer::incorrect_parameters);
    EXPECT_EQ(ask(10, {"1", "0010", key, "PN"}), answer::incorrect_parameters);
    EXPECT_EQ(ask(10, {"1", "0010203", key, "PN"}), answer::incorrect_parameters);
    EXPECT_EQ(get("lte_sim_status"), "READY");
    EXPECT_EQ(ask(10, {"1", "00102", key, "PN"}), answer::ok);
    EXPECT_EQ(get("lte_sim_status"), "PH-NET PIN");
    EXPECT_EQ(ask(10, {"0", "", key, "PN"}), answer::ok);
    EXPECT_EQ(get("lte_sim_status"), "READY");
    EXPECT_EQ(ask(10, {"1", "", key, "PN"}), answer::ok); // to its own network
    EXPECT_EQ(get("lte_sim_status"), "READY");
}

TEST_F(AtFields, AFactoryResetForgetsTheOperatorFormat)
{
    EXPECT_EQ(ask(16, {"", "", "", "2"}), answer::ok);
    EXPECT_EQ(get("lte_operator_select_operator"), "00101");
    EXPECT_EQ(ask(21), answer::ok);
    unlock();
    EXPECT_EQ(get("lte_operator_select_operator"), "Test Network");
}

} // namespace
