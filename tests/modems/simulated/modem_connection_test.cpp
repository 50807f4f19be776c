// The data connection of the whole modem: what prevents it, and what ends it.
#include "tests/support/fake_clock_modem.h"

namespace
{

using namespace daemons;
using namespace simulated;
using namespace std::chrono_literals;

using State = ConnectionState;

class ModemWithData : public FakeClockModem
{
protected:
    void connect()
    {
        unlock();
        modem.connection.modify({"own.example", "", "", Authentication::none, PdpType::ipv6}, now);
        ASSERT_EQ(modem.connection.start(modem.data_refusal(), now), CmeError::ok);
        pass(2s);
        ASSERT_TRUE(modem.connection.connected());
    }
    void expect_dropped(CmeError reason)
    {
        pass(0s);
        EXPECT_EQ(modem.connection.state(), State::disconnected);
        EXPECT_EQ(modem.connection.last_error(), reason);
        EXPECT_EQ(modem.data_refusal(), reason);
    }
};

TEST_F(ModemWithData, RefusesForTheFirstReasonFound)
{
    pass(0s);
    EXPECT_EQ(modem.data_refusal(), CmeError::sim_pin_required);
    modem.sim.pin1.verify("1234");
    pass(0s);
    EXPECT_EQ(modem.data_refusal(), CmeError::no_network_service);
    EXPECT_FALSE(modem.attached());
    pass(3s);
    EXPECT_EQ(modem.data_refusal(), CmeError::ok);
    EXPECT_TRUE(modem.attached());
    modem.packet_domain = false;
    EXPECT_EQ(modem.data_refusal(), CmeError::not_allowed);
    EXPECT_FALSE(modem.attached());
}

TEST_F(ModemWithData, DropsWithTheRadio)
{
    connect();
    modem.set_functionality(4);
    expect_dropped(CmeError::not_allowed);
}

TEST_F(ModemWithData, DropsWithTheCell)
{
    connect();
    modem.network.select("00102", {});
    expect_dropped(CmeError::no_network_service);
}

TEST_F(ModemWithData, DropsWithThePacketDomain)
{
    connect();
    modem.packet_domain = false;
    expect_dropped(CmeError::not_allowed);
}

TEST_F(ModemWithData, DropsWithTheCard)
{
    connect();
    for (int i = 0; i < 3; ++i)
        modem.sim.pin1.verify("0000");
    expect_dropped(CmeError::sim_puk_required);
}

TEST_F(ModemWithData, ThePdpContextIsTheConnectionsWhileItIsUp)
{
    connect();
    EXPECT_EQ(modem.pdp().apn, "own.example");
    EXPECT_EQ(modem.pdp().type, PdpType::ipv6);
    modem.connection.stop(now);
    pass(1s);
    EXPECT_EQ(modem.pdp().apn, "internet.example");
    EXPECT_EQ(modem.pdp().type, PdpType::ipv4v6);
    EXPECT_EQ(modem.last_apn, "own.example");
}

TEST_F(ModemWithData, IsDueForTheNextSecondOfTheConnection)
{
    connect();
    EXPECT_LE(*modem.next_deadline(), now + 1s);
    pass(1s);
    EXPECT_EQ(modem.connection.uptime(), 1s);
}

TEST_F(ModemWithData, AFactoryResetEndsItAndForgetsItsProfile)
{
    connect();
    modem.factory_reset();
    pass(0s);
    EXPECT_EQ(modem.connection.state(), State::disconnected);
    EXPECT_EQ(modem.connection.profile().apn, "");
    EXPECT_EQ(modem.connection.last_error(), CmeError::ok);
}

} // namespace
