// The modem comes and goes, ModemManager too, and the bus.
#include "modem_fixture.h"

#include <fcntl.h>
#include <thread>

namespace
{

using stand_in::Answer;
using stand_in::Value;

constexpr const char *other_path = "/org/freedesktop/ModemManager1/Modem/1";

class MmEventsTest : public ModemTest
{
protected:
    bool is_gone() const
    {
        return comes([](const ModemStatus &now) { return now.imei.empty() && !now.sim; });
    }
    // Registered.
    bool is_there() const
    {
        return comes(
            [](const ModemStatus &now) { return now.registration == daemons::Registration::home; });
    }
    // The objects of a registered modem, under another number.
    void add_other(const std::string &device, const std::string &imei)
    {
        manager->add(other_path, "Modem",
                     "{'Device': <'" + device + "'>, 'State': <8>, 'EquipmentIdentifier': <'" +
                         imei + "'>, 'UnlockRequired': <uint32 1>}");
        manager->add(other_path, "Modem3gpp", "{'RegistrationState': <uint32 1>}");
    }
};

TEST_F(MmEventsTest, WithoutAModemNothingIsKnown)
{
    start();
    EXPECT_TRUE(is_gone());
    EXPECT_EQ(status().connection, std::nullopt);
    EXPECT_EQ(status().registration, std::nullopt);
    EXPECT_EQ(modem->enter_pin("1234"), CmeError::no_connection_to_phone);
}

TEST_F(MmEventsTest, AModemIsFoundWhenItComes)
{
    start();
    EXPECT_TRUE(is_gone());
    add_registered();
    EXPECT_TRUE(is_there());
    EXPECT_TRUE(comes([](const ModemStatus &now) { return now.iccid == "8900101123456789016"; }));
}

// Its values stay for the grace, so that no reader sees a modem without a SIM in between.
TEST_F(MmEventsTest, AModemThatIsAwayForAMomentKeepsItsValues)
{
    grace = 60s;
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    std::atomic<int> empty = 0;
    modem->watch([&] { empty += status().imei.empty(); });
    manager->remove(stand_in::modem_path);
    EXPECT_TRUE(stand_in::eventually([&] { return modem->path().empty(); }));
    EXPECT_EQ(status().sim, SimStatus::ready);
    add_other("/sys/devices/usb1/1-1", "001010012345680");
    EXPECT_TRUE(comes([](const ModemStatus &now) { return now.imei == "001010012345680"; }));
    EXPECT_EQ(empty, 0);
    modem->watch({});
}

TEST_F(MmEventsTest, AVerbWaitsForAModemThatIsAwayForAMoment)
{
    grace = 60s;
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    manager->remove(stand_in::modem_path, "Modem3gpp");
    ASSERT_TRUE(stand_in::eventually([&] {
        return modem->tree().read([](const modem_manager::Objects &objects) {
            return !objects.at(stand_in::modem_path).contains(modem_manager::modem_3gpp);
        });
    }));
    std::thread later([this] {
        std::this_thread::sleep_for(50ms);
        manager->add(stand_in::modem_path, "Modem3gpp", "{'RegistrationState': <uint32 1>}");
    });
    EXPECT_EQ(modem->select_automatically(), CmeError::ok);
    later.join();
}

TEST_F(MmEventsTest, AfterTheGraceThereIsNoModem)
{
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    manager->remove(stand_in::modem_path);
    EXPECT_TRUE(is_gone());
    EXPECT_EQ(modem->select_automatically(), CmeError::no_connection_to_phone);
    add_registered();
    EXPECT_TRUE(is_there());
    EXPECT_EQ(modem->select_automatically(), CmeError::ok);
}

TEST_F(MmEventsTest, ARequestToAModemThatIsGoneEndsWithTheGrace)
{
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    manager->on("Modem3gpp.Scan", {"", "()", nullptr, true});
    std::thread unplug([this] {
        EXPECT_TRUE(stand_in::eventually([this] { return manager->was_called("Modem3gpp.Scan"); }));
        manager->remove(stand_in::modem_path);
    });
    std::vector<daemons::Operator> found;
    EXPECT_EQ(modem->search(found), CmeError::no_connection_to_phone);
    unplug.join();
}

TEST_F(MmEventsTest, TheFirstModemStaysInUse)
{
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    add_other("/sys/devices/usb1/1-2", "001010099999999");
    manager->set(stand_in::modem_path, "Modem", "{'Revision': <'FW 2'>}");
    EXPECT_TRUE(comes([](const ModemStatus &now) { return now.firmware == "FW 2"; }));
    EXPECT_EQ(status().imei, "001010012345672");
    manager->remove(stand_in::modem_path); // for good: then it is the other one's turn
    EXPECT_TRUE(comes([](const ModemStatus &now) { return now.imei == "001010099999999"; }));
}

TEST_F(MmEventsTest, ADeviceIsChosenByItsPlace)
{
    add_registered();
    add_other("/sys/devices/usb1/1-2", "001010099999999");
    modem_manager::Options options;
    options.device = "/sys/devices/usb1/../usb1/1-2";
    start(options);
    EXPECT_TRUE(is_there());
    EXPECT_EQ(status().imei, "001010099999999");
    manager->remove(other_path);
    EXPECT_TRUE(is_gone());
}

TEST_F(MmEventsTest, LivesThroughARestartOfModemManager)
{
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    manager.reset();
    EXPECT_TRUE(is_gone());
    manager.emplace(bus.address());
    add_locked();
    EXPECT_TRUE(comes(SimStatus::pin_required));
    EXPECT_FALSE(manager->was_called("Sim.SendPin"));
}

TEST_F(MmEventsTest, ARequestEndsWithModemManager)
{
    grace = 60s;
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    manager->on("Modem3gpp.Scan", {"", "()", nullptr, true});
    std::thread end([this] {
        EXPECT_TRUE(stand_in::eventually([this] { return manager->was_called("Modem3gpp.Scan"); }));
        manager.reset();
    });
    std::vector<daemons::Operator> found;
    EXPECT_EQ(modem->search(found), CmeError::no_connection_to_phone);
    end.join();
}

TEST_F(MmEventsTest, LivesThroughARestartOfTheBus)
{
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    manager->on("Modem3gpp.Scan", {"", "()", nullptr, true});
    std::thread end([this] {
        EXPECT_TRUE(stand_in::eventually([this] { return manager->was_called("Modem3gpp.Scan"); }));
        bus.end();
    });
    std::vector<daemons::Operator> found;
    EXPECT_EQ(modem->search(found), CmeError::no_connection_to_phone);
    end.join();
    EXPECT_TRUE(is_gone());
    bus.start();
    restart_manager();
    add_registered();
    EXPECT_TRUE(is_there());
    EXPECT_EQ(modem->select_automatically(), CmeError::ok);
}

TEST_F(MmEventsTest, WithoutABusTheStartReportsWhy)
{
    bus.end();
    modem_manager::Options options;
    options.bus = bus.address();
    modem.emplace(options);
    EXPECT_NE(modem->start(), "");
    EXPECT_EQ(modem->enter_pin("1234"), CmeError::no_connection_to_phone);
    bus.start(); // it is tried again
    restart_manager();
    add_registered();
    EXPECT_TRUE(is_there());
}

TEST_F(MmEventsTest, StopEndsEveryVerb)
{
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    for (const char *method : {"Modem3gpp.Scan", "Modem3gpp.Register", "Simple.Connect"})
        manager->on(method, {"", "()", nullptr, true});
    daemons::DataProfile profile;
    profile.apn = "internet.example";
    EXPECT_EQ(modem->set_data_profile(profile), CmeError::ok);
    EXPECT_EQ(modem->connect(), CmeError::ok);
    std::vector<daemons::Operator> found;
    CmeError searched = CmeError::ok, selected = CmeError::ok;
    std::thread one([&] { searched = modem->search(found); });
    std::thread other([&] { selected = modem->select_automatically(); });
    for (const char *method : {"Modem3gpp.Scan", "Modem3gpp.Register", "Simple.Connect"})
        EXPECT_TRUE(stand_in::eventually([&] { return manager->was_called(method); })) << method;
    modem->stop();
    one.join();
    other.join();
    EXPECT_EQ(searched, CmeError::no_connection_to_phone);
    EXPECT_EQ(selected, CmeError::no_connection_to_phone);
    EXPECT_EQ(modem->enter_pin("1234"), CmeError::no_connection_to_phone);
}

TEST_F(MmEventsTest, ASimThatIsSwappedIsReadAgain)
{
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    const std::string other = "/org/freedesktop/ModemManager1/SIM/1";
    manager->add(other, "Sim", "{'SimIdentifier': <'8900102987654321015'>}");
    manager->set(stand_in::modem_path, "Modem", "{'Sim': <objectpath '" + other + "'>}");
    EXPECT_TRUE(comes([](const ModemStatus &now) { return now.iccid == "8900102987654321015"; }));
}

TEST_F(MmEventsTest, AMissingSimIsNotAMissingModem)
{
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    manager->set(stand_in::modem_path, "Modem",
                 "{'State': <-1>, 'StateFailedReason': <uint32 2>, 'Sim': <objectpath '/'>}");
    EXPECT_TRUE(comes(SimStatus::absent));
    EXPECT_EQ(status().imei, "001010012345672");
    EXPECT_EQ(status().iccid, "");
    EXPECT_EQ(modem->enter_pin("1234"), CmeError::sim_not_inserted);
}

TEST_F(MmEventsTest, ADeniedCallIsReportedOnce)
{
    add_registered();
    start();
    ASSERT_TRUE(is_there());
    manager->on("Modem3gpp.Register", {"org.freedesktop.ModemManager1.Error.Core.Unauthorized"});
    testing::internal::CaptureStderr();
    EXPECT_EQ(modem->select_automatically(), CmeError::not_allowed);
    EXPECT_EQ(modem->select_automatically(), CmeError::not_allowed);
    const std::string errors = testing::internal::GetCapturedStderr();
    const std::string line = "ModemManager refuses Register to this user";
    EXPECT_NE(errors.find(line), std::string::npos) << errors;
    EXPECT_EQ(errors.find(line), errors.rfind(line)) << errors; // once
}

// It is tried once, and once more for a modem that comes back.
TEST_F(MmEventsTest, AModemThatCanNotBeEnabledIsLeftAlone)
{
    add_locked();
    manager->on("Modem.Enable", {"org.freedesktop.ModemManager1.Error.Core.Failed"});
    start();
    ASSERT_TRUE(comes(SimStatus::pin_required));
    unlock();
    EXPECT_TRUE(stand_in::eventually([&] { return manager->was_called("Modem.Enable"); }));
    for (int i = 0; i < 5; ++i)
        manager->set(stand_in::modem_path, "Modem", "{'State': <3>}");
    manager->set(stand_in::modem_path, "Modem", "{'Revision': <'FW 2'>}");
    EXPECT_TRUE(comes([](const ModemStatus &now) { return now.firmware == "FW 2"; }));
    EXPECT_EQ(manager->count("Modem.Enable"), 1);
}

} // namespace
