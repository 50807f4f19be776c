// What the commands of the scenario language do to the modem, on a clock that the test moves.
#include "tests/support/commanded_modem.h"

#include <set>

namespace
{

using namespace daemons;
using namespace std::chrono_literals;
using Status = ModemStatus;

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
    EXPECT_EQ(error("signal"), "7: the signal is missing");
    EXPECT_EQ(error("signal rsrp=-141"),
              "8: rsrp is a whole number from -140 to -44, not 'rsrp=-141'");
    EXPECT_EQ(error("signal sinr=41"), "8: sinr is a whole number from -23 to 40, not 'sinr=41'");
    EXPECT_EQ(error("signal sinr=1 sinr=2"), "15: a value is given once, not 'sinr=2'");
    for (const std::string word : {"rsrp", "snr=3", "=3", "rsrp:3"})
        EXPECT_EQ(error("signal " + word),
                  "8: the signal is auto, or some of rsrp=N, rsrq=N, rssi=N, sinr=N, not '" + word +
                      "'");
    EXPECT_EQ(error("signal auto rsrp=-100"), "13: unexpected 'rsrp=-100'");
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
    run("coverage umts");
    clock.advance(3s);
    EXPECT_EQ(status().technology, Technology::utran);
    EXPECT_EQ(status().operator_long, "Test Network");
    run("coverage gsm");
    clock.advance(3s);
    EXPECT_EQ(status().technology, Technology::gsm);
    EXPECT_EQ(status().registration, Registration::roaming);
    run("coverage lte");
    clock.advance(3s);
    EXPECT_EQ(status().technology, Technology::eutran);
    EXPECT_EQ(error("coverage poor"),
              "10: the coverage is one of: full, none, lte, umts, gsm, not 'poor'");
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
    EXPECT_EQ(error("deny"), "5: the cause is missing");
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
              "6: the network is one of: 00101, 00102, 00103, 99970, 99971, not '26201'");
}

TEST_F(NetworkCommands, AHandoverChangesTheCellAndNothingElse)
{
    run("state connected");
    const Status before = status();
    run("handover");
    const Status after = status();
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

class StateCommands : public CommandedModem
{
};

TEST_F(StateCommands, BringTheModemThereAtOnce)
{
    run("state unlocked");
    EXPECT_EQ(status().sim, SimStatus::ready);
    EXPECT_EQ(status().registration, Registration::searching);
    run("state registered");
    EXPECT_EQ(status().registration, Registration::home);
    EXPECT_EQ(status().connection, ConnectionState::disconnected);
    run("state connected");
    EXPECT_EQ(status().connection, ConnectionState::connected);
    EXPECT_EQ(status().data_profile.apn, "internet.example");
    EXPECT_EQ(status().ipv4_address, "192.0.2.10");
    run("state connected"); // is there already
    EXPECT_EQ(status().ipv4_address, "192.0.2.10");
    run("state locked");
    EXPECT_EQ(status().sim, SimStatus::pin_required);
    EXPECT_EQ(status().registration, Registration::none);
    EXPECT_EQ(status().connection, ConnectionState::disconnected);
    EXPECT_EQ(error("state dead"),
              "7: the state is one of: locked, unlocked, registered, connected, not 'dead'");
}

TEST_F(StateCommands, PutRightWhatIsInTheWay)
{
    modem.set_functionality(4);
    modem.set_packet_domain(false);
    for (const char *const trouble :
         {"sim remove", "sim fail", "sim lock-network", "puk-tries 0", "pin-tries 0",
          "coverage none", "coverage gsm", "deny 8", "roam 00103", "modem reset"}) {
        run(trouble);
        EXPECT_NE(status().connection, ConnectionState::connected) << trouble;
        run("state connected");
        EXPECT_EQ(status().connection, ConnectionState::connected) << trouble;
        EXPECT_EQ(status().sim, SimStatus::ready) << trouble;
        clock.advance(10s);
        EXPECT_EQ(status().connection, ConnectionState::connected) << trouble;
        run("state locked");
    }
}

TEST_F(StateCommands, KeepTheUsersProfile)
{
    modem.set_data_profile({.apn = "own.example"});
    run("state connected");
    EXPECT_EQ(status().data_profile.apn, "own.example");
    EXPECT_EQ(status().last_apn, "own.example");
}

TEST_F(StateCommands, ADroppedConnectionStaysDown)
{
    EXPECT_EQ(failure("connection drop"), "no connection to drop: the data connection is down");
    run("state connected");
    run("connection drop");
    EXPECT_EQ(status().connection, ConnectionState::disconnected);
    EXPECT_EQ(status().last_error, CmeError::no_network_service);
    EXPECT_EQ(status().ipv4_address, "");
    EXPECT_EQ(status().registration, Registration::home);
    clock.advance(1h);
    EXPECT_EQ(status().connection, ConnectionState::disconnected);
    EXPECT_EQ(modem.connect(), CmeError::ok);
    clock.advance(2s);
    EXPECT_EQ(status().connection, ConnectionState::connected);
    EXPECT_EQ(status().ipv4_address, "192.0.2.11");
    run("connection drop 27");
    EXPECT_EQ(status().last_error, CmeError::missing_apn);
    EXPECT_EQ(error("connection drop 40").substr(0, 45),
              "17: the cause is one of: 8 (operator determin");
    EXPECT_EQ(error("connection lose"),
              "12: what happens to the connection is one of: drop, not 'lose'");
}

TEST_F(StateCommands, AConnectionThatTheNetworkWantsBackComesBack)
{
    run("state connected");
    run("connection drop 39");
    EXPECT_EQ(status().connection, ConnectionState::transitioning);
    EXPECT_EQ(status().ipv4_address, "");
    clock.advance(2s);
    EXPECT_EQ(status().connection, ConnectionState::connected);
    EXPECT_EQ(status().ipv4_address, "192.0.2.11");
}

TEST_F(StateCommands, AResetTakesEverythingForAWhile)
{
    run("state connected");
    modem.set_roaming(Roaming::off);
    modem.list_messages();
    run("modem reset");
    const Status down = status();
    EXPECT_EQ(down.imei, "");
    EXPECT_EQ(down.sim, std::nullopt);
    EXPECT_EQ(down.attempts.pin1, std::nullopt);
    EXPECT_EQ(down.registration, std::nullopt);
    EXPECT_EQ(down.connection, std::nullopt);
    EXPECT_EQ(down.roaming, std::nullopt);
    EXPECT_EQ(down.data_profile.apn, "internet.example"); // the daemon's own
    EXPECT_EQ(down.messages.size(), 6U);
    EXPECT_EQ(modem.enter_pin("1234"), CmeError::no_connection_to_phone);
    EXPECT_EQ(modem.set_roaming(Roaming::on), CmeError::no_connection_to_phone);
    clock.advance(4999ms);
    EXPECT_EQ(status().imei, "");
    clock.advance(1ms);
    EXPECT_EQ(status().sim, SimStatus::pin_required);
    EXPECT_EQ(status().roaming, Roaming::off);
    EXPECT_EQ(status().attempts.pin1, 3);
    EXPECT_EQ(status().connection, ConnectionState::disconnected);
    EXPECT_EQ(status().last_error, CmeError::no_connection_to_phone);
    EXPECT_EQ(modem.enter_pin("1234"), CmeError::ok);
    run("modem reset 1min");
    clock.advance(59s);
    EXPECT_EQ(status().imei, "");
}

TEST_F(StateCommands, AResetEndsASearch)
{
    run("state registered");
    std::vector<Operator> found;
    SearchThread search(*this, found);
    EXPECT_EQ(status().search, CmeError::search_running);
    run("modem reset");
    EXPECT_EQ(search.result(), CmeError::no_connection_to_phone);
    EXPECT_TRUE(found.empty());
}

TEST_F(StateCommands, ASilentModemAnswersLate)
{
    run("state registered");
    run("modem silent 30s");
    run("coverage none");
    CmeError answer = CmeError::unknown;
    clock.begin_work();
    std::thread caller([&] {
        const scenario::Work work(clock, scenario::Work::Begun{});
        answer = modem.set_roaming(Roaming::off);
    });
    clock.advance(29s);
    EXPECT_EQ(answer, CmeError::unknown);
    EXPECT_EQ(status().registration, Registration::home); // what it was
    clock.advance(1s);
    EXPECT_EQ(answer, CmeError::ok);
    EXPECT_EQ(status().registration, Registration::searching);
    caller.join();
    EXPECT_EQ(error("modem"), "6: what happens to the modem is missing");
    EXPECT_EQ(error("modem silent"), "13: the time of silence is missing");
}

TEST_F(StateCommands, AStopEndsTheSilence)
{
    run("modem silent 30s");
    std::thread caller(
        [&] { EXPECT_EQ(modem.set_roaming(Roaming::off), CmeError::no_connection_to_phone); });
    modem.stop();
    caller.join();
}

} // namespace
