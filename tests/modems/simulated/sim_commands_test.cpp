// The SIM that goes, comes back as another one, fails, or loses its attempts.
#include "tests/support/commanded_modem.h"

namespace
{

using namespace daemons;
using namespace std::chrono_literals;

using SimCommands = CommandedModem;

TEST_F(SimCommands, WithoutASimNothingOfItIsKnown)
{
    run("state connected");
    run("sim remove");
    const ModemStatus empty = status();
    EXPECT_EQ(empty.sim, SimStatus::absent);
    EXPECT_EQ(empty.pin_enabled, std::nullopt);
    EXPECT_EQ(empty.attempts.pin1, std::nullopt);
    EXPECT_EQ(empty.attempts.puk2, std::nullopt);
    EXPECT_EQ(empty.iccid + empty.imsi + empty.subscriber_number, "");
    EXPECT_EQ(empty.registration, Registration::none);
    EXPECT_EQ(empty.connection, ConnectionState::disconnected);
    EXPECT_EQ(empty.last_error, CmeError::sim_not_inserted);
    EXPECT_NE(empty.imei, "");
}

TEST_F(SimCommands, WithoutASimEveryVerbThatNeedsOneIsRefused)
{
    run("state registered");
    run("sim remove");
    std::vector<Operator> found;
    const CmeError answers[] = {
        modem.enter_pin("1234"),
        modem.enter_puk("12345678", "1234"),
        modem.change_pin("1234", "4321"),
        modem.set_pin_enabled(false, "1234"),
        modem.lock_network("", "11223344"),
        modem.unlock_network("11223344"),
        modem.select_operator("00101", {}),
        modem.search(found),
        modem.list_messages(),
        modem.delete_messages(1, DeleteFlag::one),
        modem.start_device_management(),
        modem.connect(),
        modem.refresh(StatusPart::pin_counters),
        modem.refresh(StatusPart::pin_mode),
        modem.refresh(StatusPart::sim),
    };
    for (const CmeError answer : answers)
        EXPECT_EQ(answer, CmeError::sim_not_inserted) << &answer - answers;
    for (const CmeError answer :
         {modem.refresh(StatusPart::revision), modem.refresh(StatusPart::packet_service),
          modem.set_roaming(Roaming::on), modem.set_functionality(1), modem.disconnect()})
        EXPECT_EQ(answer, CmeError::ok);
}

TEST_F(SimCommands, AnInsertedSimStartsAndAsksForItsPin)
{
    modem.enter_pin("0000");
    run("sim remove");
    run("sim insert");
    EXPECT_EQ(status().sim, SimStatus::not_ready);
    EXPECT_EQ(status().iccid, "");
    EXPECT_EQ(modem.enter_pin("1234"), CmeError::sim_busy);
    clock.advance(1s);
    EXPECT_EQ(status().sim, SimStatus::pin_required);
    EXPECT_EQ(status().attempts.pin1, 2); // the card keeps them
    EXPECT_EQ(modem.enter_pin("1234"), CmeError::ok);
    clock.advance(3s);
    EXPECT_EQ(status().registration, Registration::home);
}

TEST_F(SimCommands, ACardThatIsInIsNotInserted)
{
    run("state registered");
    EXPECT_THROW(run("sim insert"), std::runtime_error);
    clock.advance(1s);
    EXPECT_EQ(status().sim, SimStatus::ready);
    EXPECT_EQ(status().registration, Registration::home);
}

TEST_F(SimCommands, AnotherSimHasItsOwnIdentityNetworkAndAttempts)
{
    run("state registered");
    const ModemStatus first = status();
    modem.enter_pin("0000");
    run("sim insert other");
    clock.advance(1s);
    EXPECT_NE(status().iccid, first.iccid);
    EXPECT_EQ(status().attempts.pin1, 3);
    EXPECT_EQ(modem.enter_pin("1234"), CmeError::ok);
    EXPECT_NE(status().imsi, first.imsi);
    EXPECT_NE(status().subscriber_number, first.subscriber_number);
    clock.advance(3s);
    EXPECT_EQ(status().cell.mnc, "02");
    EXPECT_EQ(status().registration, Registration::home);
    run("sim insert other"); // the first one again
    clock.advance(1s);
    EXPECT_EQ(status().iccid, first.iccid);
    EXPECT_EQ(status().attempts.pin1, 2);
    EXPECT_EQ(error("sim insert third"), "12: the card is one of: other, not 'third'");
}

TEST_F(SimCommands, AFailedSimIsNotABlockedOne)
{
    run("state registered");
    run("sim fail");
    EXPECT_EQ(status().sim, SimStatus::not_ready);
    EXPECT_EQ(status().attempts.puk1, std::nullopt);
    EXPECT_EQ(modem.enter_pin("1234"), CmeError::sim_failure);
    clock.advance(1h);
    EXPECT_EQ(status().sim, SimStatus::not_ready);
    run("sim insert");
    clock.advance(1s);
    EXPECT_EQ(status().sim, SimStatus::pin_required);
    EXPECT_EQ(status().attempts.puk1, 10);
}

TEST_F(SimCommands, ANetworkLockRejectsTheCardThatIsIn)
{
    run("state registered");
    run("sim lock-network");
    EXPECT_EQ(status().sim, SimStatus::network_locked);
    EXPECT_EQ(status().registration, Registration::none);
    EXPECT_EQ(modem.unlock_network("11223344"), CmeError::ok);
    EXPECT_EQ(status().sim, SimStatus::ready);
    run("sim lock-network 00101"); // the card's own
    EXPECT_EQ(status().sim, SimStatus::ready);
    run("sim insert other");
    clock.advance(1s);
    modem.enter_pin("1234");
    EXPECT_EQ(status().sim, SimStatus::network_locked);
    EXPECT_EQ(error("sim lock-network 1"), "18: the network is 5 to 6 digits, not '1'");
}

TEST_F(SimCommands, AttemptsAreSet)
{
    run("state registered");
    run("pin-tries 1");
    EXPECT_EQ(status().attempts.pin1, 1);
    EXPECT_EQ(status().sim, SimStatus::ready);
    EXPECT_EQ(modem.enter_pin("0000"), CmeError::sim_puk_required);
    run("puk-tries 1");
    EXPECT_EQ(status().sim, SimStatus::puk_required);
    EXPECT_EQ(modem.enter_puk("00000000", "1234"), CmeError::sim_failure);
    EXPECT_EQ(status().sim, SimStatus::permanently_blocked);
    run("puk-tries 10");
    EXPECT_EQ(modem.enter_puk("12345678", "1234"), CmeError::ok);
    run("pin-tries 0");
    EXPECT_EQ(status().sim, SimStatus::puk_required);
    run("pin-tries 3");
    EXPECT_EQ(status().sim, SimStatus::pin_required); // what was verified is no longer
    EXPECT_EQ(error("pin-tries 4"),
              "11: the number of attempts is a whole number from 0 to 3, not '4'");
    EXPECT_EQ(error("puk-tries 11"),
              "11: the number of attempts is a whole number from 0 to 10, not '11'");
}

} // namespace
