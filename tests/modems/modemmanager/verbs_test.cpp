// What each verb asks of ModemManager, and what becomes of its answers.
#include "modem_fixture.h"

#include <thread>

namespace
{

using daemons::ConnectionState;
using daemons::DataProfile;
using daemons::DeleteFlag;
using daemons::PdpType;
using daemons::SearchMode;
using stand_in::Answer;
using stand_in::Value;

class VerbsTest : public ModemTest
{
protected:
    // The call, among those that the modem made by itself.
    bool made(const std::string &call) const
    {
        const auto calls = manager->calls();
        return std::find(calls.begin(), calls.end(), call) != calls.end();
    }
    void start_registered()
    {
        add_registered();
        start();
        ASSERT_TRUE(
            comes([](const ModemStatus &now) { return now.operator_long == "Test Network"; }));
    }
    void set_apn(const std::string &apn)
    {
        DataProfile profile;
        profile.apn = apn;
        ASSERT_EQ(modem->set_data_profile(profile), CmeError::ok);
    }
    void answer_connect(const std::string &apn)
    {
        manager->on("Simple.Connect", [this, apn](const Value &) {
            raise_bearer(apn);
            return Answer{"", "(objectpath '" + bearer_path() + "',)"};
        });
        manager->on("Simple.Disconnect", [this](const Value &) {
            drop_bearer();
            return Answer{};
        });
    }
};

TEST_F(VerbsTest, TheRightPinUnlocksAndEnables)
{
    add_locked();
    manager->on("Sim.SendPin", [this](const Value &) {
        unlock();
        return Answer{};
    });
    manager->on("Modem.Enable", [this](const Value &) {
        enable();
        return Answer{};
    });
    start();
    ASSERT_TRUE(comes(SimStatus::pin_required));
    EXPECT_FALSE(manager->was_called("Sim.SendPin"));
    EXPECT_EQ(modem->enter_pin("1234"), CmeError::ok);
    EXPECT_EQ(status().sim, SimStatus::ready);
    EXPECT_EQ(status().imsi, "001010123456789");
    EXPECT_TRUE(made("Sim.SendPin ('1234',)"));
    EXPECT_TRUE(stand_in::eventually([&] { return made("Modem.Enable (true,)"); }));
    EXPECT_EQ(modem->enter_pin("1234"), CmeError::not_allowed);
    EXPECT_EQ(manager->count("Sim.SendPin"), 1);
}

TEST_F(VerbsTest, AWrongPinCostsOneAttemptAndIsNotRepeated)
{
    add_locked();
    manager->on("Sim.SendPin", [this](const Value &) {
        manager->set(stand_in::modem_path, "Modem", "{'UnlockRetries': <{uint32 2: uint32 2}>}");
        return Answer{"org.freedesktop.ModemManager1.Error.MobileEquipment.IncorrectPassword"};
    });
    start();
    ASSERT_TRUE(comes(SimStatus::pin_required));
    EXPECT_EQ(modem->enter_pin("12"), CmeError::incorrect_parameters);
    EXPECT_EQ(modem->enter_pin("9999"), CmeError::incorrect_password);
    EXPECT_EQ(status().attempts.pin1, 2);
    EXPECT_EQ(manager->count("Sim.SendPin"), 1);
    EXPECT_FALSE(manager->was_called("Modem.Enable"));
}

TEST_F(VerbsTest, TheThirdWrongPinLeavesThePuk)
{
    add_locked();
    manager->on("Sim.SendPin", [this](const Value &) {
        manager->set(stand_in::modem_path, "Modem",
                     "{'UnlockRequired': <uint32 4>, 'UnlockRetries': <{uint32 4: uint32 10}>}");
        return Answer{"org.freedesktop.ModemManager1.Error.MobileEquipment.SimPuk"};
    });
    manager->on("Sim.SendPuk", [this](const Value &) {
        unlock();
        return Answer{};
    });
    start();
    ASSERT_TRUE(comes(SimStatus::pin_required));
    EXPECT_EQ(modem->enter_pin("9999"), CmeError::sim_puk_required);
    EXPECT_EQ(status().sim, SimStatus::puk_required);
    EXPECT_EQ(modem->enter_pin("1234"), CmeError::sim_puk_required);
    EXPECT_EQ(modem->enter_puk("1234", "1234"), CmeError::incorrect_parameters);
    EXPECT_EQ(modem->enter_puk("12345678", "4321"), CmeError::ok);
    EXPECT_TRUE(made("Sim.SendPuk ('12345678', '4321')"));
    EXPECT_EQ(status().sim, SimStatus::ready);
    EXPECT_EQ(manager->count("Sim.SendPin"), 1);
}

TEST_F(VerbsTest, PinModeAndChange)
{
    start_registered();
    manager->on("Sim.EnablePin", [this](const Value &) {
        manager->set(stand_in::modem_path, "Modem3gpp", "{'EnabledFacilityLocks': <uint32 0>}");
        return Answer{};
    });
    EXPECT_EQ(modem->change_pin("1234", "4321"), CmeError::ok);
    EXPECT_TRUE(made("Sim.ChangePin ('1234', '4321')"));
    EXPECT_EQ(modem->set_pin_enabled(true, "4321"), CmeError::not_allowed);
    EXPECT_EQ(modem->set_pin_enabled(false, "4321"), CmeError::ok);
    EXPECT_TRUE(made("Sim.EnablePin ('4321', false)"));
    EXPECT_EQ(status().pin_enabled, false);
    EXPECT_EQ(modem->change_pin("1234", "4321"), CmeError::not_allowed);
}

TEST_F(VerbsTest, WhatALockedSimCanNotDo)
{
    add_locked();
    start();
    ASSERT_TRUE(comes(SimStatus::pin_required));
    std::vector<daemons::Operator> found;
    EXPECT_EQ(modem->change_pin("1234", "4321"), CmeError::sim_pin_required);
    EXPECT_EQ(modem->search(found), CmeError::sim_pin_required);
    EXPECT_EQ(modem->list_messages(), CmeError::sim_pin_required);
    EXPECT_EQ(modem->connect(), CmeError::sim_pin_required);
    EXPECT_EQ(status().last_error, CmeError::sim_pin_required);
}

TEST_F(VerbsTest, Selection)
{
    start_registered();
    EXPECT_EQ(status().manual_selection, std::nullopt);
    EXPECT_EQ(modem->select_operator("00102", std::nullopt), CmeError::ok);
    EXPECT_TRUE(made("Modem3gpp.Register ('00102',)"));
    EXPECT_EQ(status().manual_selection, true);
    EXPECT_EQ(modem->select_automatically(), CmeError::ok);
    EXPECT_TRUE(made("Modem3gpp.Register ('',)"));
    EXPECT_EQ(status().manual_selection, false);
    manager->on("Modem3gpp.Register",
                {"org.freedesktop.ModemManager1.Error.MobileEquipment.NetworkNotAllowed"});
    EXPECT_EQ(modem->select_operator("00103", std::nullopt), CmeError::network_not_allowed);
    EXPECT_EQ(status().manual_selection, false);
}

TEST_F(VerbsTest, ASearchListsOperatorsAndDelaysNothing)
{
    start_registered();
    manager->on("Modem3gpp.Scan",
                {"",
                 "([{'status': <uint32 2>, 'operator-long': <'Test Network'>, 'operator-short': "
                 "<'Test'>, 'operator-code': <'00101'>, 'access-technology': <uint32 16384>}, "
                 "{'status': <uint32 3>, 'operator-code': <'99970'>, 'access-technology': "
                 "<uint32 32>}],)",
                 "(aa{sv})", true});
    std::vector<daemons::Operator> found;
    std::thread searching([&] { EXPECT_EQ(modem->search(found), CmeError::ok); });
    EXPECT_TRUE(
        comes([](const ModemStatus &now) { return now.search == CmeError::search_running; }));
    EXPECT_TRUE(stand_in::eventually([&] { return manager->was_called("Modem3gpp.Scan"); }));
    EXPECT_EQ(modem->refresh(daemons::StatusPart::pin_mode), CmeError::ok);
    manager->release();
    searching.join();
    EXPECT_EQ(status().search, CmeError::ok);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].long_name, "Test Network");
    EXPECT_EQ(found[0].state, daemons::OperatorState::current);
    EXPECT_EQ(found[0].technology, daemons::Technology::eutran);
    EXPECT_EQ(found[1].plmn, "99970");
    EXPECT_EQ(found[1].long_name, "");
    EXPECT_EQ(found[1].technology, daemons::Technology::utran);
}

TEST_F(VerbsTest, SearchModesAreThoseThatTheModemHas)
{
    start_registered();
    EXPECT_EQ(status().search_mode, SearchMode::any);
    manager->on("Modem.SetCurrentModes", [this](const Value &modes) {
        manager->set(stand_in::modem_path, "Modem",
                     "{'CurrentModes': <(uint32 " +
                         std::to_string(*modes.item(0).item(0).number()) + ", uint32 0)>}");
        return Answer{};
    });
    EXPECT_EQ(modem->set_search_mode(SearchMode::eutran_only), CmeError::ok);
    EXPECT_TRUE(made("Modem.SetCurrentModes ((8, 0),)"));
    EXPECT_EQ(status().search_mode, SearchMode::eutran_only);
    EXPECT_EQ(modem->set_search_mode(SearchMode::any), CmeError::ok);
    EXPECT_TRUE(made("Modem.SetCurrentModes ((14, 0),)"));
    manager->set(stand_in::modem_path, "Modem", "{'SupportedModes': <[(uint32 14, uint32 0)]>}");
    EXPECT_TRUE(stand_in::eventually(
        [&] { return modem->set_search_mode(SearchMode::gsm_only) == CmeError::not_supported; }));
}

TEST_F(VerbsTest, PacketDomain)
{
    start_registered();
    EXPECT_EQ(status().packet_domain, true);
    EXPECT_EQ(modem->set_packet_domain(false), CmeError::ok);
    EXPECT_TRUE(made("Modem3gpp.SetPacketServiceState (1,)"));
    EXPECT_EQ(status().packet_domain, false);
    set_apn("internet.example");
    EXPECT_EQ(modem->connect(), CmeError::not_allowed);
    manager->on("Modem3gpp.SetPacketServiceState",
                {"org.freedesktop.ModemManager1.Error.Core.Unsupported"});
    EXPECT_EQ(modem->set_packet_domain(true), CmeError::not_supported);
    EXPECT_EQ(status().packet_domain, false);
}

TEST_F(VerbsTest, Functionality)
{
    start_registered();
    manager->on("Modem.Enable", [this](const Value &on) {
        manager->set(stand_in::modem_path, "Modem",
                     *on.item(0).boolean() ? "{'State': <6>}" : "{'State': <3>}");
        return Answer{};
    });
    manager->on("Modem.SetPowerState", [this](const Value &power) {
        manager->set(stand_in::modem_path, "Modem",
                     "{'PowerState': <uint32 " + std::to_string(*power.item(0).number()) + ">}");
        return Answer{};
    });
    EXPECT_EQ(modem->set_functionality(7), CmeError::incorrect_parameters);
    EXPECT_EQ(modem->set_functionality(4), CmeError::ok);
    EXPECT_TRUE(made("Modem.Enable (false,)"));
    EXPECT_TRUE(made("Modem.SetPowerState (2,)"));
    EXPECT_EQ(modem->select_operator("00102", std::nullopt), CmeError::not_allowed);
    EXPECT_FALSE(made("Modem.Enable (true,)")); // by the modem itself
    EXPECT_EQ(modem->set_functionality(1), CmeError::ok);
    EXPECT_TRUE(made("Modem.SetPowerState (3,)"));
    EXPECT_TRUE(made("Modem.Enable (true,)"));
}

TEST_F(VerbsTest, Messages)
{
    start_registered();
    const auto path = [](const char *number) {
        return std::string("/org/freedesktop/ModemManager1/SMS/") + number;
    };
    const auto message = [](const char *state, const char *text) {
        return std::string("{'State': <uint32 ") + state +
               ">, 'Number': <'+12025550142'>, 'Text': <'" + text +
               "'>, 'Timestamp': <'2024-03-01T08:00:05+01:00'>}";
    };
    std::vector<std::string> listed{path("11"), path("7"), path("9")};
    manager->add(path("7"), "Sms", message("3", "First"));
    manager->add(path("9"), "Sms", message("5", "Sent by us"));
    manager->add(path("11"), "Sms", message("3", "Second"));
    manager->on("Messaging.List", [&](const Value &) {
        std::string all;
        for (const std::string &each : listed)
            all += (all.empty() ? "'" : ", '") + each + "'";
        return Answer{"", "([" + all + "],)", "(ao)"};
    });
    manager->on("Messaging.Delete", [&](const Value &which) {
        std::erase(listed, which.item(0).text());
        return Answer{};
    });
    EXPECT_EQ(modem->list_messages(), CmeError::ok);
    ASSERT_EQ(status().messages.size(), 2U);
    EXPECT_EQ(status().messages[0].index, 7);
    EXPECT_EQ(status().messages[0].text, "First");
    EXPECT_EQ(status().messages[0].time, "24/03/01,08:00:05+04");
    EXPECT_TRUE(status().messages[0].unread);
    EXPECT_EQ(modem->list_messages(), CmeError::ok);
    EXPECT_FALSE(status().messages[0].unread);

    EXPECT_EQ(modem->delete_messages(3, DeleteFlag::one), CmeError::invalid_index);
    EXPECT_EQ(modem->delete_messages(7, DeleteFlag::one), CmeError::ok);
    EXPECT_EQ(listed, (std::vector<std::string>{path("11"), path("9")}));
    manager->add(path("12"), "Sms", message("3", "Not read yet"));
    listed.push_back(path("12"));
    EXPECT_EQ(modem->delete_messages(0, DeleteFlag::read), CmeError::ok);
    EXPECT_EQ(listed, (std::vector<std::string>{path("9"), path("12")}));
    EXPECT_EQ(modem->delete_messages(0, DeleteFlag::read_sent), CmeError::ok);
    EXPECT_EQ(listed, (std::vector<std::string>{path("12")}));
    ASSERT_EQ(status().messages.size(), 1U);
    EXPECT_TRUE(status().messages[0].unread);
    EXPECT_EQ(modem->delete_messages(0, DeleteFlag::all), CmeError::ok);
    EXPECT_EQ(status().messages.size(), 0U);
}

TEST_F(VerbsTest, ProfilesOfTheModem)
{
    start_registered();
    manager->on("ProfileManager.List",
                {"",
                 "([{'profile-id': <1>, 'apn': <'ims'>, 'ip-type': <uint32 4>}, "
                 "{'profile-id': <3>, 'apn': <'managed.example'>, 'ip-type': <uint32 2>}],)",
                 "(aa{sv})"});
    EXPECT_EQ(modem->set_profile(3, {PdpType::ipv4v6, "bad\"apn"}), CmeError::incorrect_parameters);
    EXPECT_EQ(modem->set_profile(17, {PdpType::ip, "some.example"}),
              CmeError::incorrect_parameters);
    EXPECT_EQ(modem->set_profile(3, {PdpType::ppp, "some.example"}), CmeError::not_supported);
    EXPECT_EQ(modem->set_profile(3, {PdpType::ipv4v6, "some.example"}), CmeError::ok);
    EXPECT_EQ(status().pdp_apn, "some.example");
    EXPECT_EQ(status().pdp_type, PdpType::ipv4v6);
    EXPECT_EQ(modem->synchronize_profile(), CmeError::ok);
    EXPECT_EQ(status().pdp_apn, "managed.example");
    EXPECT_EQ(status().pdp_type, PdpType::ipv6);
}

TEST_F(VerbsTest, WhatTheModemHasNot)
{
    start_registered();
    manager->on("Modem3gpp.DisableFacilityLock",
                {"org.freedesktop.ModemManager1.Error.Core.Unsupported"});
    manager->on("Modem.FactoryReset", {"org.freedesktop.DBus.Error.UnknownMethod"});
    EXPECT_EQ(modem->set_time_zone(4), CmeError::not_supported);
    EXPECT_EQ(modem->start_device_management(), CmeError::not_supported);
    EXPECT_EQ(modem->factory_reset(), CmeError::not_supported);
    EXPECT_EQ(modem->lock_network("", "11223344"), CmeError::not_supported);
    EXPECT_EQ(modem->lock_network("00102", "11223344"), CmeError::not_supported);
    EXPECT_EQ(modem->unlock_network("11223344"), CmeError::not_supported);
    EXPECT_EQ(modem->unlock_network("11\"33"), CmeError::incorrect_parameters);
}

TEST_F(VerbsTest, AWrongControlKeyIsNotTriedTwice)
{
    add_registered();
    modem_manager::Options options;
    options.at_port = "/dev/null"; // which can't be used
    start(options);
    ASSERT_TRUE(comes(SimStatus::ready));
    manager->on("Modem3gpp.DisableFacilityLock",
                {"org.freedesktop.ModemManager1.Error.MobileEquipment.IncorrectPassword"});
    EXPECT_EQ(modem->unlock_network("11223344"), CmeError::incorrect_password);
    EXPECT_TRUE(made("Modem3gpp.DisableFacilityLock ((16, '11223344'),)"));
    manager->on("Modem3gpp.DisableFacilityLock",
                {"org.freedesktop.ModemManager1.Error.Core.Unsupported"});
    EXPECT_EQ(modem->unlock_network("11223344"), CmeError::no_connection_to_phone);
}

TEST_F(VerbsTest, AConnection)
{
    start_registered();
    answer_connect("internet.example");
    EXPECT_EQ(modem->connect(), CmeError::missing_apn);
    DataProfile profile{"internet.example", "user",
                        "secret",           daemons::Authentication::chap,
                        PdpType::ipv4v6,    daemons::IpFamily::ipv4};
    EXPECT_EQ(modem->set_data_profile(profile), CmeError::ok);
    EXPECT_EQ(modem->connect(), CmeError::ok);
    ASSERT_TRUE(comes(ConnectionState::connected));
    EXPECT_TRUE(made("Simple.Connect ({'apn': <'internet.example'>, 'ip-type': <uint32 4>, "
                     "'allow-roaming': <true>, 'allowed-auth': <uint32 4>, 'user': <'user'>, "
                     "'password': <'secret'>},)"))
        << testing::PrintToString(manager->calls());
    EXPECT_EQ(status().ipv4_address, "192.0.2.10");
    EXPECT_EQ(status().last_apn, "internet.example");
    EXPECT_EQ(status().pdp_type, PdpType::ipv4v6);
    EXPECT_EQ(status().last_error, CmeError::ok);
    EXPECT_TRUE(comes([](const ModemStatus &now) { return now.uptime >= 1; }));
    EXPECT_EQ(modem->connect(), CmeError::ok); // is up already
    EXPECT_EQ(manager->count("Simple.Connect"), 1);
    EXPECT_EQ(modem->disconnect(), CmeError::ok);
    EXPECT_TRUE(comes(ConnectionState::disconnected));
    EXPECT_EQ(status().ipv4_address, "");
    EXPECT_EQ(status().uptime, 0);
    EXPECT_EQ(status().last_error, CmeError::ok);
}

TEST_F(VerbsTest, AConnectionThatFailsTellsWhy)
{
    start_registered();
    set_apn("wrong.example");
    manager->on("Simple.Connect",
                {"org.freedesktop.ModemManager1.Error.MobileEquipment.MissingOrUnknownApn"});
    set_apn("wrong.example");
    EXPECT_EQ(modem->connect(), CmeError::ok);
    EXPECT_TRUE(
        comes([](const ModemStatus &now) { return now.last_error == CmeError::missing_apn; }));
    EXPECT_TRUE(comes(ConnectionState::disconnected));
    EXPECT_EQ(manager->count("Simple.Connect"), 1);
}

TEST_F(VerbsTest, AConnectionThatIsLostTellsWhy)
{
    start_registered();
    answer_connect("internet.example");
    set_apn("internet.example");
    EXPECT_EQ(modem->connect(), CmeError::ok);
    ASSERT_TRUE(comes(ConnectionState::connected));
    ASSERT_TRUE(comes([](const ModemStatus &now) { return now.ipv4_address == "192.0.2.10"; }));
    drop_bearer("org.freedesktop.ModemManager1.Error.MobileEquipment.OperatorDeterminedBarring");
    EXPECT_TRUE(comes(ConnectionState::disconnected));
    EXPECT_TRUE(comes(
        [](const ModemStatus &now) { return now.last_error == CmeError::network_not_allowed; }));
    EXPECT_EQ(manager->count("Simple.Connect"), 1); // it is not made again by itself
}

TEST_F(VerbsTest, ANewProfileMakesTheConnectionAgain)
{
    start_registered();
    answer_connect("internet.example");
    set_apn("internet.example"); // as saved, at the start
    EXPECT_EQ(modem->connect(), CmeError::ok);
    ASSERT_TRUE(comes(ConnectionState::connected));
    answer_connect("other.example");
    set_apn("other.example");
    EXPECT_TRUE(comes([](const ModemStatus &now) {
        return now.connection == ConnectionState::connected && now.pdp_apn == "other.example";
    }));
    EXPECT_EQ(manager->count("Simple.Disconnect"), 1);
    EXPECT_EQ(manager->count("Simple.Connect"), 2);
}

TEST_F(VerbsTest, ADisconnectCallsAConnectOff)
{
    start_registered();
    manager->on("Simple.Connect", {"", "(objectpath '/',)", nullptr, true});
    set_apn("internet.example");
    EXPECT_EQ(modem->connect(), CmeError::ok);
    ASSERT_TRUE(stand_in::eventually([&] { return manager->was_called("Simple.Connect"); }));
    EXPECT_EQ(status().connection, ConnectionState::transitioning);
    EXPECT_EQ(modem->disconnect(), CmeError::ok);
    EXPECT_TRUE(stand_in::eventually([&] { return made("Simple.Disconnect ('/',)"); }));
    EXPECT_TRUE(comes(ConnectionState::disconnected));
    EXPECT_EQ(status().last_error, CmeError::ok);
}

TEST_F(VerbsTest, ConnectsOnceAsSoonAsPossible)
{
    add_locked();
    start();
    answer_connect("internet.example");
    set_apn("internet.example");
    EXPECT_EQ(modem->connect_when_possible(), CmeError::ok);
    ASSERT_TRUE(comes(SimStatus::pin_required));
    EXPECT_FALSE(manager->was_called("Simple.Connect"));
    unlock();
    enable();
    register_home();
    EXPECT_TRUE(comes(ConnectionState::connected));
    ASSERT_TRUE(comes([](const ModemStatus &now) { return now.ipv4_address == "192.0.2.10"; }));
    drop_bearer();
    EXPECT_TRUE(comes(ConnectionState::disconnected));
    EXPECT_EQ(manager->count("Simple.Connect"), 1);
}

TEST_F(VerbsTest, RoamingIsAllowedOrNot)
{
    start_registered();
    answer_connect("internet.example");
    set_apn("internet.example");
    EXPECT_EQ(modem->set_roaming(daemons::Roaming::off), CmeError::ok);
    EXPECT_EQ(status().roaming, daemons::Roaming::off);
    manager->set(stand_in::modem_path, "Modem3gpp", "{'RegistrationState': <uint32 5>}");
    ASSERT_TRUE(comes(
        [](const ModemStatus &now) { return now.registration == daemons::Registration::roaming; }));
    EXPECT_EQ(modem->connect(), CmeError::network_not_allowed);
    EXPECT_EQ(modem->set_roaming(daemons::Roaming::on), CmeError::ok);
    EXPECT_EQ(modem->connect(), CmeError::ok);
    ASSERT_TRUE(comes(ConnectionState::connected));
    ASSERT_TRUE(comes([](const ModemStatus &now) { return now.ipv4_address == "192.0.2.10"; }));
    EXPECT_EQ(modem->set_roaming(daemons::Roaming::off), CmeError::ok);
    EXPECT_TRUE(comes(ConnectionState::disconnected));
    EXPECT_EQ(status().last_error, CmeError::network_not_allowed);
}

TEST_F(VerbsTest, AskingForReportsAndTheCell)
{
    add_registered();
    manager->add(stand_in::modem_path, "Location",
                 "{'Capabilities': <uint32 3>, 'Enabled': <uint32 0>, 'SignalsLocation': <false>}");
    manager->on("Modem.GetCellInfo",
                {"",
                 "([{'cell-type': <uint32 5>, 'serving': <false>, 'earfcn': <uint32 6200>}, "
                 "{'cell-type': <uint32 5>, 'serving': <true>, 'earfcn': <uint32 1300>}],)",
                 "(aa{sv})"});
    start();
    EXPECT_TRUE(comes([](const ModemStatus &now) { return now.band == "LTE BAND 3"; }));
    EXPECT_EQ(status().channel, "1300");
    EXPECT_EQ(status().duplex, "FDD");
    EXPECT_TRUE(stand_in::eventually([&] { return made("Signal.Setup (1,)"); }));
    EXPECT_TRUE(stand_in::eventually([&] { return made("Location.Setup (1, true)"); }));
}

} // namespace
