// The modem over a service in ModemManager's place, in the states in which tests need it.
#ifndef TESTS_MODEMS_MODEMMANAGER_MODEM_FIXTURE_H
#define TESTS_MODEMS_MODEMMANAGER_MODEM_FIXTURE_H

#include "modems/modemmanager/modem.h"
#include "stand_in.h"

using daemons::CmeError;
using daemons::ModemStatus;
using daemons::SimStatus;
using namespace std::chrono_literals;

class ModemTest : public testing::Test
{
protected:
    void add_locked()
    {
        manager->add(stand_in::sim_path, "Sim",
                     "{'SimIdentifier': <'8900101123456789016'>, 'Imsi': <''>,"
                     " 'OperatorIdentifier': <'00101'>}");
        manager->add(
            stand_in::modem_path, "Modem",
            "{'Device': <'/sys/devices/usb1/1-1'>, 'Manufacturer': <'Example'>,"
            " 'Model': <'LTE stick'>, 'Revision': <'FW 1.2'>,"
            " 'EquipmentIdentifier': <'001010012345672'>, 'State': <2>,"
            " 'UnlockRequired': <uint32 2>, 'PowerState': <uint32 3>,"
            " 'UnlockRetries': <{uint32 2: uint32 3, 4: 10, 3: 3, 5: 10}>,"
            " 'Bearers': <@ao []>, 'OwnNumbers': <@as []>,"
            " 'SupportedModes': <[(uint32 14, uint32 0), (2, 0), (4, 0), (8, 0), (12, 8)]>,"
            " 'CurrentModes': <(uint32 14, uint32 0)>,"
            " 'Sim': <objectpath '/org/freedesktop/ModemManager1/SIM/0'>}");
    }
    // What ModemManager does after the right PIN, up to a disabled modem.
    void unlock()
    {
        manager->set(stand_in::modem_path, "Modem", "{'State': <1>, 'UnlockRequired': <uint32 1>}");
        manager->set(stand_in::sim_path, "Sim", "{'Imsi': <'001010123456789'>}");
        manager->add(stand_in::modem_path, "Modem3gpp",
                     "{'Imei': <'001010012345672'>, 'RegistrationState': <uint32 0>,"
                     " 'OperatorCode': <''>, 'OperatorName': <''>,"
                     " 'EnabledFacilityLocks': <uint32 1>, 'PacketServiceState': <uint32 1>}");
        for (const char *interface : {"Messaging", "Simple", "Signal", "ProfileManager"})
            manager->add(stand_in::modem_path, interface, "{}");
        manager->set(stand_in::modem_path, "Modem",
                     "{'State': <3>, 'OwnNumbers': <['+12025550100']>}");
    }
    void enable() { manager->set(stand_in::modem_path, "Modem", "{'State': <6>}"); }
    void register_home()
    {
        manager->set(stand_in::modem_path, "Modem3gpp",
                     "{'RegistrationState': <uint32 1>, 'OperatorCode': <'00101'>,"
                     " 'OperatorName': <'Test Network'>, 'PacketServiceState': <uint32 2>}");
        manager->set(stand_in::modem_path, "Modem",
                     "{'State': <8>, 'AccessTechnologies': <uint32 16384>,"
                     " 'SignalQuality': <(uint32 81, true)>}");
    }
    void add_registered()
    {
        add_locked();
        unlock();
        enable();
        register_home();
    }
    std::string bearer_path() const
    {
        return "/org/freedesktop/ModemManager1/Bearer/" + std::to_string(bearers);
    }
    // A bearer, as a connection makes it.
    static constexpr const char *static_ipv4 =
        "'Interface': <'wwan0'>,"
        " 'Ip4Config': <{'method': <uint32 2>, 'address': <'192.0.2.10'>,"
        " 'prefix': <uint32 24>, 'gateway': <'192.0.2.1'>}>";
    void raise_bearer(const std::string &apn, const std::string &addresses = static_ipv4)
    {
        ++bearers;
        const std::string path = bearer_path();
        manager->add(path, "Bearer",
                     "{'Connected': <true>, " + addresses + ", 'Properties': <{'apn': <'" + apn +
                         "'>, 'ip-type': <uint32 4>}>}");
        manager->set(stand_in::modem_path, "Modem",
                     "{'State': <11>, 'Bearers': <[objectpath '" + path + "']>}");
    }
    void drop_bearer(const std::string &reason = "")
    {
        manager->set(bearer_path(), "Bearer",
                     "{'Connected': <false>, 'ConnectionError': <('" + reason + "', '')>}");
        manager->set(stand_in::modem_path, "Modem", "{'State': <8>}");
    }
    void start(modem_manager::Options options = {})
    {
        options.bus = bus.address();
        options.grace = grace;
        options.refresh = 1s;
        modem.emplace(options);
        ASSERT_EQ(modem->start(), "");
    }
    void restart_manager()
    {
        manager.reset();
        manager.emplace(bus.address());
    }
    ModemStatus status() const { return modem->status(); }
    bool comes(const std::function<bool(const ModemStatus &)> &condition) const
    {
        return stand_in::eventually([&] { return condition(status()); });
    }
    bool comes(SimStatus sim) const
    {
        return comes([&](const ModemStatus &now) { return now.sim == sim; });
    }
    bool comes(daemons::ConnectionState state) const
    {
        return comes([&](const ModemStatus &now) { return now.connection == state; });
    }

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

    int bearers = 0; // so far
    std::chrono::milliseconds grace{300};
    stand_in::Bus bus;
    std::optional<stand_in::Manager> manager{std::in_place, bus.address()};
    std::optional<modem_manager::Modem> modem;
};

#endif
