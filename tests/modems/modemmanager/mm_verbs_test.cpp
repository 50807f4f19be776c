// What each verb asks of ModemManager, and what becomes of its answers.
#include "modem_fixture.h"

#include <thread>

namespace
{

using daemons::DeleteFlag;
using daemons::PdpType;
using daemons::SearchMode;
using stand_in::Answer;
using stand_in::Value;

class MmVerbsTest : public ModemTest
{
};

TEST_F(MmVerbsTest, Selection)
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

TEST_F(MmVerbsTest, ASearchListsOperatorsAndDelaysNothing)
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

TEST_F(MmVerbsTest, SearchModesAreThoseThatTheModemHas)
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

TEST_F(MmVerbsTest, PacketDomain)
{
    start_registered();
    EXPECT_EQ(status().packet_domain, true);
    EXPECT_EQ(modem->set_packet_domain(false), CmeError::ok);
    EXPECT_TRUE(made("Modem3gpp.SetPacketServiceState (1,)"));
    EXPECT_EQ(status().packet_domain, false);
    manager->on("Modem3gpp.SetPacketServiceState",
                {"org.freedesktop.ModemManager1.Error.Core.Unsupported"});
    EXPECT_EQ(modem->set_packet_domain(true), CmeError::not_supported);
    EXPECT_EQ(status().packet_domain, false);
}

TEST_F(MmVerbsTest, Functionality)
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

TEST_F(MmVerbsTest, Messages)
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

TEST_F(MmVerbsTest, ProfilesOfTheModem)
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
    EXPECT_TRUE(made("ProfileManager.Set ({'profile-id': <3>, 'apn': <'some.example'>, 'ip-type': "
                     "<uint32 4>},)"))
        << testing::PrintToString(manager->calls());
    EXPECT_EQ(status().pdp_apn, "some.example");
    EXPECT_EQ(status().pdp_type, PdpType::ipv4v6);
    EXPECT_EQ(modem->synchronize_profile(), CmeError::ok);
    EXPECT_EQ(status().pdp_apn, "managed.example");
    EXPECT_EQ(status().pdp_type, PdpType::ipv6);
}

TEST_F(MmVerbsTest, WhatTheModemDoesNotHaveIsNotSupported)
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

TEST_F(MmVerbsTest, ResetAndDeviceManagement)
{
    start_registered();
    manager->add(stand_in::modem_path, "Oma", "{}");
    EXPECT_TRUE(stand_in::eventually(
        [&] { return modem->start_device_management() == CmeError::ok; })); // once it is known
    EXPECT_TRUE(made("Oma.Setup (1,)"));
    EXPECT_TRUE(made("Oma.StartClientInitiatedSession (10,)"));
    EXPECT_EQ(modem->set_roaming(daemons::Roaming::off), CmeError::ok);
    EXPECT_EQ(modem->factory_reset(), CmeError::ok);
    EXPECT_TRUE(made("Modem.FactoryReset ('000000',)"));
    EXPECT_EQ(status().roaming, daemons::Roaming::automatic); // what was set has gone
}

TEST_F(MmVerbsTest, AskingForReportsAndTheCell)
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
