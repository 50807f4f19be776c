// Messages, profiles, and what holds between the parts of the simulated modem.
#include "modems/simulated/profiles.h"
#include "tests/support/fake_clock_modem.h"

#include <gtest/gtest.h>
#include <set>

namespace
{

using namespace sim;
using namespace std::chrono_literals;

constexpr const char *home = SimCard::home_network;

int unread(const Messages &messages)
{
    return static_cast<int>(std::count_if(messages.all().begin(), messages.all().end(),
                                          [](const Message &m) { return m.unread; }));
}

TEST(Messages, HoldWhatReadersFindHard)
{
    const Messages messages;
    const auto has = [&](auto what) {
        return std::any_of(messages.all().begin(), messages.all().end(), what);
    };
    EXPECT_TRUE(has([](const Message &m) { return m.text.size() == 160; }));
    EXPECT_TRUE(has([](const Message &m) { return m.text.size() > 2000 && m.text.size() < 7000; }));
    EXPECT_TRUE(has([](const Message &m) { return m.text.find("100%") != std::string::npos; }));
    EXPECT_TRUE(has([](const Message &m) { return m.text.find("ü") != std::string::npos; }));
    EXPECT_EQ(messages.all().size(), 6U);
    EXPECT_LT(messages.all().size(), Messages::capacity);
    EXPECT_EQ(unread(messages), 3);
}

TEST(Messages, OneGoesByItsIndex)
{
    Messages messages;
    EXPECT_EQ(messages.remove("5", "0"), ret_ok);
    EXPECT_EQ(messages.all().size(), 5U);
    EXPECT_EQ(messages.remove("5", "0"), ret_invalid_index);
    EXPECT_EQ(messages.remove("4", "0"), ret_invalid_index);
    EXPECT_EQ(messages.all().size(), 5U);
    EXPECT_EQ(messages.all()[3].index, 6); // indices stay
}

TEST(Messages, FlagsOneToThreeDeleteTheReadOnes)
{
    for (const char *flag : {"1", "2", "3"}) {
        Messages messages;
        EXPECT_EQ(messages.remove("0", flag), ret_ok);
        EXPECT_EQ(messages.all().size(), 3U);
        EXPECT_EQ(unread(messages), 3);
        EXPECT_EQ(messages.remove("0", flag), ret_ok); // nothing left to delete
    }
}

TEST(Messages, FlagFourDeletesAll)
{
    Messages messages;
    EXPECT_EQ(messages.remove("3", "4"), ret_ok);
    EXPECT_TRUE(messages.all().empty());
    EXPECT_EQ(messages.remove("3", "0"), ret_invalid_index);
}

TEST(Messages, OddNumbersDeleteNothing)
{
    Messages messages;
    for (const char *odd : {"", "x", "5 ", "-1", "99999999999999999999"}) {
        EXPECT_EQ(messages.remove("5", odd), ret_incorrect_parameters) << odd;
        EXPECT_NE(messages.remove(odd, "0"), ret_ok) << odd;
    }
    EXPECT_EQ(messages.remove("5", "5"), ret_incorrect_parameters);
    EXPECT_EQ(messages.all().size(), 6U);
}

TEST(Messages, ListingMarksThemRead)
{
    Messages messages;
    messages.mark_all_read();
    EXPECT_EQ(unread(messages), 0);
}

TEST(Profiles, TheDataProfileIsPublished)
{
    Profiles profiles;
    EXPECT_EQ(profiles.set("1", "IP", "other.example"), ret_ok);
    EXPECT_EQ(profiles.published().apn, "internet.example");
    EXPECT_EQ(profiles.of_modem(1).apn, "other.example");
    EXPECT_EQ(profiles.set("3", "IPV6", "new.example"), ret_ok);
    EXPECT_EQ(profiles.published().apn, "new.example");
    EXPECT_EQ(profiles.published().type, "IPV6");
}

TEST(Profiles, RefuseWhatNoModemTakes)
{
    Profiles profiles;
    for (const char *number : {"", "0", "17", "-1", "x"})
        EXPECT_EQ(profiles.set(number, "IP", "a"), ret_incorrect_parameters) << number;
    for (const char *type : {"", "ip", "IPV4"})
        EXPECT_EQ(profiles.set("3", type, "a"), ret_incorrect_parameters) << type;
    for (const char *apn : {"a b", "a\"b", "a,b", "ü"})
        EXPECT_EQ(profiles.set("3", "IP", apn), ret_incorrect_parameters) << apn;
    EXPECT_EQ(profiles.set("16", "IP", ""), ret_ok);
    EXPECT_EQ(profiles.published().apn, "internet.example");
}

TEST(Profiles, ProvisioningShowsAfterASynchronization)
{
    Profiles profiles;
    profiles.provision();
    EXPECT_EQ(profiles.published().apn, "internet.example");
    profiles.synchronize();
    EXPECT_EQ(profiles.published().apn, "managed.example");
}

TEST_F(ModemInTime, ALockedSimGetsNoService)
{
    pass(0s);
    pass(1h);
    EXPECT_EQ(modem.sim_status(), SimStatus::pin);
    EXPECT_EQ(modem.network.registration(), Registration::none);
    EXPECT_EQ(modem.due(), std::nullopt);
    EXPECT_EQ(modem.refusal(Needs::nothing), ret_ok);
    EXPECT_EQ(modem.refusal(Needs::open_sim), ret_sim_pin_required);
    EXPECT_EQ(modem.refusal(Needs::radio), ret_sim_pin_required);
}

TEST_F(ModemInTime, AnOpenSimRegisters)
{
    modem.sim.pin1.verify("1234");
    pass(0s);
    EXPECT_EQ(modem.refusal(Needs::radio), ret_ok);
    EXPECT_EQ(modem.refusal(Needs::network), ret_no_network_service);
    EXPECT_EQ(*modem.due(), now + 3s);
    pass(3s);
    EXPECT_EQ(modem.refusal(Needs::network), ret_ok);
    EXPECT_EQ(modem.last_apn, "internet.example");
    EXPECT_EQ(*modem.due(), now + 2s); // the signal's next step
}

TEST_F(ModemInTime, StatusFollowsTheCard)
{
    open();
    EXPECT_EQ(modem.sim_status(), SimStatus::ready);
    for (int i = 0; i < 3; ++i)
        modem.sim.pin1.verify("0000");
    pass(0s);
    EXPECT_EQ(modem.sim_status(), SimStatus::puk);
    EXPECT_EQ(modem.refusal(Needs::open_sim), ret_sim_puk_required);
    EXPECT_EQ(modem.network.serving(), nullptr);
    for (int i = 0; i < 10; ++i)
        modem.sim.pin1.unblock("00000000", "1234");
    EXPECT_EQ(modem.sim_status(), SimStatus::bad);
    EXPECT_EQ(modem.refusal(Needs::open_sim), ret_sim_failure);
}

TEST_F(ModemInTime, ANetworkLockTakesTheServiceButNotTheSim)
{
    open();
    modem.lock.set("PN", "1", "00102", NetworkLock::control_key, home);
    pass(0s);
    EXPECT_EQ(modem.sim_status(), SimStatus::network_locked);
    EXPECT_EQ(modem.network.registration(), Registration::none);
    EXPECT_EQ(modem.refusal(Needs::open_sim), ret_ok);
    EXPECT_EQ(modem.refusal(Needs::radio), ret_network_pin_required);
    modem.lock.unlock(NetworkLock::control_key);
    pass(0s);
    pass(3s);
    EXPECT_EQ(modem.network.registration(), Registration::home);
}

TEST_F(ModemInTime, OfflineDeregistersAndOnlineRegistersAgain)
{
    open();
    for (const char *level : {"4", "0"}) {
        EXPECT_EQ(modem.set_functionality(level), ret_ok);
        pass(0s);
        EXPECT_EQ(modem.network.registration(), Registration::none);
        EXPECT_EQ(modem.refusal(Needs::radio), ret_not_allowed);
        EXPECT_EQ(modem.due(), std::nullopt);
        EXPECT_EQ(modem.set_functionality("1"), ret_ok);
        pass(0s);
        EXPECT_EQ(modem.network.registration(), Registration::searching);
        pass(3s);
        EXPECT_EQ(modem.network.registration(), Registration::home);
    }
    for (const char *level : {"2", "3", "5", "255", "", "x"})
        EXPECT_EQ(modem.set_functionality(level), ret_incorrect_parameters) << level;
    EXPECT_TRUE(modem.online());
}

TEST_F(ModemInTime, TheSignalMovesWhileRegistered)
{
    open();
    std::set<int> seen;
    for (int i = 0; i < 50; ++i) {
        seen.insert(modem.signal.rsrp(*modem.network.serving()));
        pass(2s);
    }
    EXPECT_GT(seen.size(), 1U);
    EXPECT_EQ(modem.network.registration(), Registration::home);
}

TEST_F(ModemInTime, ASessionBringsTheOperatorsProfile)
{
    open();
    ASSERT_EQ(modem.start_device_management(now), ret_ok);
    EXPECT_EQ(modem.start_device_management(now), ret_not_allowed);
    pass(3999ms);
    EXPECT_EQ(modem.profiles.of_modem(Profiles::for_data).apn, "internet.example");
    pass(1ms);
    EXPECT_EQ(modem.profiles.of_modem(Profiles::for_data).apn, "managed.example");
    EXPECT_EQ(modem.profiles.published().apn, "internet.example");
    EXPECT_EQ(modem.start_device_management(now), ret_ok);
}

TEST_F(ModemInTime, ASessionBreaksOffWithTheNetwork)
{
    open();
    modem.start_device_management(now);
    modem.set_functionality("4");
    pass(10s);
    modem.set_functionality("1");
    pass(0s);
    pass(10s);
    EXPECT_EQ(modem.profiles.of_modem(Profiles::for_data).apn, "internet.example");
}

TEST_F(ModemInTime, AFactoryResetGivesTheDefaultModemAndLocks)
{
    open();
    modem.network.set_roaming(Roaming::off);
    modem.network.set_search_mode(SearchMode::eutran_only);
    modem.network.select("00102", "7");
    modem.messages.remove("", "4");
    modem.messages.remove("1", "4");
    modem.profiles.set("3", "IP", "other.example");
    modem.operator_format = OperatorFormat::numeric;
    modem.packet_domain = false;
    modem.functionality = 4;
    modem.factory_reset();
    pass(0s);

    EXPECT_EQ(modem.sim_status(), SimStatus::pin);
    EXPECT_EQ(modem.network.registration(), Registration::none);
    EXPECT_EQ(modem.network.last(), nullptr);
    EXPECT_EQ(modem.network.roaming(), Roaming::automatic);
    EXPECT_EQ(modem.network.search_mode(), SearchMode::any);
    EXPECT_TRUE(modem.network.automatic());
    EXPECT_EQ(modem.messages.all().size(), 6U);
    EXPECT_EQ(modem.profiles.published().apn, "internet.example");
    EXPECT_EQ(modem.operator_format, OperatorFormat::long_name);
    EXPECT_TRUE(modem.packet_domain);
    EXPECT_TRUE(modem.online());
    EXPECT_EQ(modem.last_apn, "");
}

TEST_F(ModemInTime, AFactoryResetIsNoWayAroundTheCard)
{
    open();
    modem.sim.pin1.change("1234", "4321");
    modem.sim.pin1.verify("1234");
    modem.lock.set("PN", "1", "00102", NetworkLock::control_key, home);
    modem.factory_reset();
    EXPECT_EQ(modem.sim.pin1.tries(), 2);
    EXPECT_EQ(modem.sim.pin1.verify("1234"), ret_incorrect_password);
    EXPECT_EQ(modem.sim.pin1.verify("4321"), ret_ok);
    EXPECT_EQ(modem.sim_status(), SimStatus::network_locked);
}

} // namespace
