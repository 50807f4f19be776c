// The SIM card: codes are sent as they come, once.
#include "modem_fixture.h"

namespace
{

using stand_in::Answer;
using stand_in::Value;

class MmSimTest : public ModemTest
{
};

TEST_F(MmSimTest, TheRightPinUnlocksAndEnables)
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

TEST_F(MmSimTest, AWrongPinCostsOneAttemptAndIsNotRepeated)
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

TEST_F(MmSimTest, TheThirdWrongPinLeavesThePuk)
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

TEST_F(MmSimTest, PinModeAndChange)
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

TEST_F(MmSimTest, WhatALockedSimCanNotDo)
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

TEST_F(MmSimTest, AWrongControlKeyIsNotTriedTwice)
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

} // namespace
