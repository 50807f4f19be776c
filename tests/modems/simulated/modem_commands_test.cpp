// The modem as a whole, brought somewhere, crashed or silent, by the commands of the scenario
// language.
#include "tests/support/commanded_modem.h"

namespace
{

using namespace daemons;
using namespace std::chrono_literals;

class StateCommands : public CommandedModem
{
};

TEST_F(StateCommands, ReachTheStateAtOnce)
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

TEST_F(StateCommands, RemoveWhatPreventsTheState)
{
    modem.set_functionality(4);
    modem.set_packet_domain(false);
    for (const char *const obstacle :
         {"sim remove", "sim fail", "sim lock-network", "puk-tries 0", "pin-tries 0",
          "coverage none", "coverage gsm", "deny 8", "roam 00103", "modem reset"}) {
        run(obstacle);
        EXPECT_NE(status().connection, ConnectionState::connected) << obstacle;
        run("state connected");
        EXPECT_EQ(status().connection, ConnectionState::connected) << obstacle;
        EXPECT_EQ(status().sim, SimStatus::ready) << obstacle;
        clock.advance(10s);
        EXPECT_EQ(status().connection, ConnectionState::connected) << obstacle;
        run("state locked");
    }
}

TEST_F(StateCommands, KeepTheUsersProfile)
{
    set_apn("own.example");
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
    const ModemStatus down = status();
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
    EXPECT_EQ(error("modem"),
              "6: what happens to the modem is missing; it is one of: reset, silent");
    EXPECT_EQ(error("modem silent"), "13: the time of silence is missing; it is a number with its "
                                     "unit: 250ms, 1.5s, 2min; at most 1440min");
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
