// Messages, profiles, and the rules that tie the parts of the simulated modem together.
#include "modems/simulated/profiles.h"
#include "tests/support/fake_clock_modem.h"

#include <gtest/gtest.h>
#include <set>

namespace
{

using namespace daemons;
using namespace simulated;
using namespace std::chrono_literals;

int unread(const Messages &messages)
{
    return static_cast<int>(std::count_if(messages.all().begin(), messages.all().end(),
                                          [](const Message &m) { return m.unread; }));
}

TEST(Messages, IncludeHardCasesForReaders)
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

TEST(Messages, OneIsDeletedByItsIndex)
{
    Messages messages;
    EXPECT_EQ(messages.remove(5, DeleteFlag::one), CmeError::ok);
    EXPECT_EQ(messages.all().size(), 5U);
    EXPECT_EQ(messages.remove(5, DeleteFlag::one), CmeError::invalid_index);
    EXPECT_EQ(messages.remove(4, DeleteFlag::one), CmeError::invalid_index);
    EXPECT_EQ(messages.all().size(), 5U);
    EXPECT_EQ(messages.all()[3].index, 6); // indices stay
}

TEST(Messages, FlagsOneToThreeDeleteTheReadOnes)
{
    for (const DeleteFlag flag :
         {DeleteFlag::read, DeleteFlag::read_sent, DeleteFlag::read_sent_unsent}) {
        Messages messages;
        EXPECT_EQ(messages.remove(0, flag), CmeError::ok);
        EXPECT_EQ(messages.all().size(), 3U);
        EXPECT_EQ(unread(messages), 3);
        EXPECT_EQ(messages.remove(0, flag), CmeError::ok); // nothing left to delete
    }
}

TEST(Messages, FlagFourDeletesAll)
{
    Messages messages;
    EXPECT_EQ(messages.remove(3, DeleteFlag::all), CmeError::ok);
    EXPECT_TRUE(messages.all().empty());
    EXPECT_EQ(messages.remove(3, DeleteFlag::one), CmeError::invalid_index);
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
    EXPECT_EQ(profiles.set(1, {PdpType::ip, "other.example"}), CmeError::ok);
    EXPECT_EQ(profiles.published().apn, "internet.example");
    EXPECT_EQ(profiles.stored(1).apn, "other.example");
    EXPECT_EQ(profiles.set(3, {PdpType::ipv6, "new.example"}), CmeError::ok);
    EXPECT_EQ(profiles.published().apn, "new.example");
    EXPECT_EQ(profiles.published().type, PdpType::ipv6);
}

TEST(Profiles, RefuseInvalidNumbersAndNames)
{
    Profiles profiles;
    for (const int number : {0, 17, -1})
        EXPECT_EQ(profiles.set(number, {PdpType::ip, "a"}), CmeError::incorrect_parameters)
            << number;
    for (const char *apn : {"a b", "a\"b", "a,b", "ü"})
        EXPECT_EQ(profiles.set(3, {PdpType::ip, apn}), CmeError::incorrect_parameters) << apn;
    EXPECT_EQ(profiles.set(16, {PdpType::ip, ""}), CmeError::ok);
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

TEST_F(FakeClockModem, ALockedSimGetsNoService)
{
    pass(0s);
    pass(1h);
    EXPECT_EQ(modem.sim_status(), SimStatus::pin_required);
    EXPECT_EQ(modem.network.registration(), Registration::none);
    EXPECT_EQ(modem.next_deadline(), std::nullopt);
    EXPECT_EQ(modem.refusal(Needs::nothing), CmeError::ok);
    EXPECT_EQ(modem.refusal(Needs::unlocked_sim), CmeError::sim_pin_required);
    EXPECT_EQ(modem.refusal(Needs::radio), CmeError::sim_pin_required);
}

TEST_F(FakeClockModem, AnUnlockedSimRegisters)
{
    modem.sim.pin1.verify("1234");
    pass(0s);
    EXPECT_EQ(modem.refusal(Needs::radio), CmeError::ok);
    EXPECT_EQ(modem.refusal(Needs::network), CmeError::no_network_service);
    EXPECT_EQ(*modem.next_deadline(), now + 3s);
    pass(3s);
    EXPECT_EQ(modem.refusal(Needs::network), CmeError::ok);
    EXPECT_EQ(modem.last_apn, "internet.example");
    EXPECT_EQ(*modem.next_deadline(), now + 2s); // the signal's next step
}

TEST_F(FakeClockModem, StatusFollowsTheCard)
{
    unlock();
    EXPECT_EQ(modem.sim_status(), SimStatus::ready);
    for (int i = 0; i < 3; ++i)
        modem.sim.pin1.verify("0000");
    pass(0s);
    EXPECT_EQ(modem.sim_status(), SimStatus::puk_required);
    EXPECT_EQ(modem.refusal(Needs::unlocked_sim), CmeError::sim_puk_required);
    EXPECT_EQ(modem.network.serving(), nullptr);
    for (int i = 0; i < 10; ++i)
        modem.sim.pin1.unblock("00000000", "1234");
    EXPECT_EQ(modem.sim_status(), SimStatus::permanently_blocked);
    EXPECT_EQ(modem.refusal(Needs::unlocked_sim), CmeError::sim_failure);
}

TEST_F(FakeClockModem, ANetworkLockTakesTheServiceButNotTheSim)
{
    unlock();
    modem.lock.lock("00102", NetworkLock::control_key);
    pass(0s);
    EXPECT_EQ(modem.sim_status(), SimStatus::network_locked);
    EXPECT_EQ(modem.network.registration(), Registration::none);
    EXPECT_EQ(modem.refusal(Needs::unlocked_sim), CmeError::ok);
    EXPECT_EQ(modem.refusal(Needs::radio), CmeError::network_pin_required);
    modem.lock.unlock(NetworkLock::control_key);
    pass(0s);
    pass(3s);
    EXPECT_EQ(modem.network.registration(), Registration::home);
}

TEST_F(FakeClockModem, OfflineDeregistersAndOnlineRegistersAgain)
{
    unlock();
    for (const int level : {4, 0}) {
        EXPECT_EQ(modem.set_functionality(level), CmeError::ok);
        pass(0s);
        EXPECT_EQ(modem.network.registration(), Registration::none);
        EXPECT_EQ(modem.refusal(Needs::radio), CmeError::not_allowed);
        EXPECT_EQ(modem.next_deadline(), std::nullopt);
        EXPECT_EQ(modem.set_functionality(1), CmeError::ok);
        pass(0s);
        EXPECT_EQ(modem.network.registration(), Registration::searching);
        pass(3s);
        EXPECT_EQ(modem.network.registration(), Registration::home);
    }
    for (const int level : {2, 3, 5, 255, -1})
        EXPECT_EQ(modem.set_functionality(level), CmeError::incorrect_parameters) << level;
    EXPECT_TRUE(modem.online());
}

TEST_F(FakeClockModem, TheSignalMovesWhileRegistered)
{
    unlock();
    std::set<int> seen;
    for (int i = 0; i < 50; ++i) {
        seen.insert(modem.signal.rsrp(*modem.network.serving()));
        pass(2s);
    }
    EXPECT_GT(seen.size(), 1U);
    EXPECT_EQ(modem.network.registration(), Registration::home);
}

TEST_F(FakeClockModem, ASessionBringsTheOperatorsProfile)
{
    unlock();
    ASSERT_EQ(modem.start_device_management(now), CmeError::ok);
    EXPECT_EQ(modem.start_device_management(now), CmeError::not_allowed);
    pass(3999ms);
    EXPECT_EQ(modem.profiles.stored(Profiles::data_profile).apn, "internet.example");
    pass(1ms);
    EXPECT_EQ(modem.profiles.stored(Profiles::data_profile).apn, "managed.example");
    EXPECT_EQ(modem.profiles.published().apn, "internet.example");
    EXPECT_EQ(modem.start_device_management(now), CmeError::ok);
}

TEST_F(FakeClockModem, ASessionIsAbandonedWithTheNetwork)
{
    unlock();
    modem.start_device_management(now);
    modem.set_functionality(4);
    pass(10s);
    modem.set_functionality(1);
    pass(0s);
    pass(10s);
    EXPECT_EQ(modem.profiles.stored(Profiles::data_profile).apn, "internet.example");
}

TEST_F(FakeClockModem, AFactoryResetGivesTheDefaultModemAndLocks)
{
    unlock();
    modem.network.set_roaming(Roaming::off);
    modem.network.set_search_mode(SearchMode::eutran_only);
    modem.network.select("00102", Technology::eutran);
    modem.delete_messages(1, DeleteFlag::all);
    modem.profiles.set(3, {PdpType::ip, "other.example"});
    modem.packet_domain = false;
    modem.functionality = 4;
    modem.factory_reset();
    pass(0s);

    EXPECT_EQ(modem.sim_status(), SimStatus::pin_required);
    EXPECT_EQ(modem.network.registration(), Registration::none);
    EXPECT_EQ(modem.network.last(), nullptr);
    EXPECT_EQ(modem.network.roaming(), Roaming::automatic);
    EXPECT_EQ(modem.network.search_mode(), SearchMode::any);
    EXPECT_TRUE(modem.network.automatic());
    EXPECT_EQ(modem.messages.all().size(), 6U);
    EXPECT_EQ(modem.profiles.published().apn, "internet.example");
    EXPECT_TRUE(modem.listed.empty());
    EXPECT_TRUE(modem.packet_domain);
    EXPECT_TRUE(modem.online());
    EXPECT_EQ(modem.last_apn, "");
}

TEST_F(FakeClockModem, AFactoryResetDoesNotBypassTheCard)
{
    unlock();
    modem.sim.pin1.change("1234", "4321");
    modem.sim.pin1.verify("1234");
    modem.lock.lock("00102", NetworkLock::control_key);
    modem.factory_reset();
    EXPECT_EQ(modem.sim.pin1.attempts(), 2);
    EXPECT_EQ(modem.sim.pin1.verify("1234"), CmeError::incorrect_password);
    EXPECT_EQ(modem.sim.pin1.verify("4321"), CmeError::ok);
    EXPECT_EQ(modem.sim_status(), SimStatus::network_locked);
}

} // namespace
