// The signal and the network around the modem, as the commands of the scenario language set them.
#include "tests/support/commanded_modem.h"

#include <set>

namespace
{

using namespace daemons;
using namespace std::chrono_literals;

class SignalCommands : public CommandedModem
{
protected:
    void SetUp() override { run("state registered"); }
};

TEST_F(SignalCommands, FixWhatTheyName)
{
    run("signal rsrp=-118 sinr=-3");
    std::set<std::optional<int>> rsrq;
    for (int i = 0; i < 60; ++i) {
        const SignalStatus signal = status().signal;
        EXPECT_EQ(signal.rsrp, -118);
        EXPECT_EQ(signal.sinr, -3);
        EXPECT_EQ(signal.rssi, -63 - 26); // as far from its mean as the RSRP
        EXPECT_EQ(signal.csq_rssi, -89);
        rsrq.insert(signal.rsrq);
        clock.advance(2s);
    }
    EXPECT_GT(rsrq.size(), 1U);
    run("signal rssi=-70 rsrq=-19");
    EXPECT_EQ(status().signal.rssi, -70);
    EXPECT_EQ(status().signal.rsrq, -19);
    run("signal auto");
    EXPECT_NE(status().signal.rssi, -70);
    EXPECT_NEAR(*status().signal.rsrp, -92, 7);
}

TEST_F(SignalCommands, RefuseWhatIsOutOfRange)
{
    EXPECT_EQ(error("signal"),
              "7: the signal is missing; it is auto, or some of rsrp=N, rsrq=N, rssi=N, sinr=N");
    EXPECT_EQ(error("signal rsrp=-141"),
              "8: rsrp is a whole number from -140 to -44, not 'rsrp=-141'");
    EXPECT_EQ(error("signal sinr=41"), "8: sinr is a whole number from -23 to 40, not 'sinr=41'");
    EXPECT_EQ(error("signal sinr=1 sinr=2"), "15: a value is given once, not 'sinr=2'");
    for (const std::string word : {"rsrp", "snr=3", "=3", "rsrp:3"})
        EXPECT_EQ(error("signal " + word),
                  "8: the signal is auto, or some of rsrp=N, rsrq=N, rssi=N, sinr=N, not '" + word +
                      "'");
    EXPECT_EQ(error("signal auto rsrp=-100"), "13: unexpected 'rsrp=-100'; the command is: signal "
                                              "[rsrp=DBM] [rsrq=DB] [rssi=DBM] [sinr=DB] | auto");
}

class NetworkCommands : public SignalCommands
{
};

TEST_F(NetworkCommands, CoverageGoesAndComesBack)
{
    run("coverage none");
    EXPECT_EQ(status().registration, Registration::searching);
    EXPECT_EQ(status().signal.rsrp, std::nullopt);
    EXPECT_EQ(status().cell.cell_id, "");
    EXPECT_EQ(status().last_cell.cell_id, "01A2D003");
    EXPECT_EQ(modem.select_operator("00101", {}), CmeError::no_network_service);
    clock.advance(1h);
    EXPECT_EQ(status().registration, Registration::searching);
    run("coverage full");
    clock.advance(3s);
    EXPECT_EQ(status().registration, Registration::home);
}

TEST_F(NetworkCommands, CoverageMayBeOfOneTechnology)
{
    run("coverage utran");
    clock.advance(3s);
    EXPECT_EQ(status().technology, Technology::utran);
    EXPECT_EQ(status().operator_long, "Test Network");
    run("coverage gsm");
    clock.advance(3s);
    EXPECT_EQ(status().technology, Technology::gsm);
    EXPECT_EQ(status().registration, Registration::roaming);
    run("coverage eutran");
    clock.advance(3s);
    EXPECT_EQ(status().technology, Technology::eutran);
    EXPECT_EQ(error("coverage poor"),
              "10: the coverage is one of: full, none, eutran, utran, gsm, not 'poor'");
}

TEST_F(NetworkCommands, ASearchWithoutCoverageFindsNothing)
{
    run("coverage none");
    std::vector<Operator> found(1);
    EXPECT_EQ(search(found), CmeError::ok);
    EXPECT_TRUE(found.empty());
    run("roam 00102");
    run("coverage full");
    EXPECT_EQ(search(found), CmeError::ok);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].plmn, "00102");
}

TEST_F(NetworkCommands, ADeniedModemHasNoNetworkUntilItIsAllowed)
{
    run("state connected");
    run("deny 15");
    EXPECT_EQ(status().registration, Registration::denied);
    EXPECT_EQ(status().packet_attached, false);
    EXPECT_EQ(status().connection, ConnectionState::disconnected);
    EXPECT_EQ(status().last_error, CmeError::network_not_allowed);
    EXPECT_EQ(modem.connect(), CmeError::network_not_allowed);
    EXPECT_EQ(modem.select_operator("00102", {}), CmeError::network_not_allowed);
    clock.advance(1h);
    EXPECT_EQ(status().registration, Registration::denied);
    run("allow");
    EXPECT_EQ(status().registration, Registration::searching);
    clock.advance(3s);
    EXPECT_EQ(status().registration, Registration::home);
    EXPECT_EQ(error("deny 1").substr(0, 52),
              "6: the cause is one of: 2 (IMSI unknown in HSS), 3 (");
    EXPECT_EQ(error("deny").substr(0, 63),
              "5: the cause is missing; it is one of: 2 (IMSI unknown in HSS),");
}

TEST_F(NetworkCommands, RoamAndHome)
{
    run("roam 00102");
    EXPECT_EQ(status().registration, Registration::searching);
    clock.advance(3s);
    EXPECT_EQ(status().registration, Registration::roaming);
    EXPECT_EQ(status().cell.mnc, "02");
    run("roam 00103"); // takes no foreign SIM
    clock.advance(1h);
    EXPECT_EQ(status().registration, Registration::searching);
    run("home");
    clock.advance(3s);
    EXPECT_EQ(status().registration, Registration::home);
    EXPECT_EQ(error("roam 26201"),
              "6: the network is one of: 00101, 00102, 99970, 99971, 00103, not '26201'");
}

TEST_F(NetworkCommands, AHandoverChangesTheCellAndNothingElse)
{
    run("state connected");
    const ModemStatus before = status();
    run("handover");
    const ModemStatus after = status();
    EXPECT_NE(after.cell.cell_id, before.cell.cell_id);
    EXPECT_NE(after.channel, before.channel);
    EXPECT_NE(after.band, before.band);
    EXPECT_EQ(after.last_cell.cell_id, after.cell.cell_id);
    EXPECT_EQ(after.operator_long, before.operator_long);
    EXPECT_EQ(after.registration, Registration::home);
    EXPECT_EQ(after.connection, ConnectionState::connected);
    EXPECT_EQ(after.ipv4_address, before.ipv4_address);
    clock.advance(10s);
    EXPECT_EQ(status().cell.cell_id, after.cell.cell_id);
    std::vector<Operator> found;
    EXPECT_EQ(search(found), CmeError::ok);
    EXPECT_EQ(found[0].state, OperatorState::current);
    run("handover");
    EXPECT_EQ(status().cell.cell_id, before.cell.cell_id);
}

TEST_F(NetworkCommands, AHandoverNeedsACell)
{
    run("coverage none");
    EXPECT_EQ(failure("handover"), "no handover: the modem is not registered");
}

} // namespace
