// The data connection: how it comes, goes and is lost.
#include "modem_fixture.h"

namespace
{

using daemons::ConnectionState;
using daemons::DataProfile;
using daemons::PdpType;
using stand_in::Answer;
using stand_in::Value;

class MmConnectionTest : public ModemTest
{
protected:
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

TEST_F(MmConnectionTest, AConnection)
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

TEST_F(MmConnectionTest, AFailedConnectionGivesItsReason)
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

TEST_F(MmConnectionTest, ALostConnectionGivesItsReason)
{
    const std::string prefix = "org.freedesktop.ModemManager1.Error.";
    const std::pair<std::string, CmeError> rows[] = {
        {prefix + "MobileEquipment.OperatorDeterminedBarring", CmeError::network_not_allowed},
        {prefix + "Core.Failed", CmeError::no_network_service},
        {"", CmeError::no_network_service},
    };
    start_registered();
    answer_connect("internet.example");
    set_apn("internet.example");
    for (const auto &[reason, error] : rows) {
        EXPECT_EQ(modem->connect(), CmeError::ok);
        ASSERT_TRUE(comes([](const ModemStatus &now) { return now.ipv4_address == "192.0.2.10"; }));
        drop_bearer(reason);
        EXPECT_TRUE(comes(ConnectionState::disconnected));
        EXPECT_TRUE(comes([error = error](const ModemStatus &now) {
            return now.last_error == error;
        })) << reason;
    }
    EXPECT_EQ(manager->count("Simple.Connect"), 3); // it is not made again by itself
}

TEST_F(MmConnectionTest, ANewProfileMakesTheConnectionAgain)
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

TEST_F(MmConnectionTest, ADisconnectCancelsAConnect)
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

TEST_F(MmConnectionTest, ConnectsOnceAsSoonAsPossible)
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

TEST_F(MmConnectionTest, RoamingIsAllowedOrNot)
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

TEST_F(MmConnectionTest, NoneWithThePacketDomainOff)
{
    start_registered();
    set_apn("internet.example");
    EXPECT_EQ(modem->set_packet_domain(false), CmeError::ok);
    EXPECT_EQ(modem->connect(), CmeError::not_allowed);
    EXPECT_FALSE(manager->was_called("Simple.Connect"));
}

} // namespace
