// The simulated modem as it is plugged into a computer on which ModemManager runs.
#ifndef CMIF_SIM_USB_USB_MODEM_H
#define CMIF_SIM_USB_USB_MODEM_H

#include "dbus_connection.h"
#include "manager_watch.h"
#include "modems/at_front/front.h"
#include "scenario/command.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>

namespace cmif_sim
{

// For the process that is the network (network.h). Everything is done by a thread of its own:
// what happens to the modem may come from one of its ports, which ends when the modem is unplugged.
class UsbModem
{
public:
    // The directory of device_files.h, the socket of the D-Bus daemon, and a process of the
    // computer.
    UsbModem(std::string directory, const std::string &bus, pid_t computer,
             at_front::AnswerFaults &answer_faults);
    ~UsbModem(); // unplugs
    UsbModem(const UsbModem &) = delete;
    UsbModem &operator=(const UsbModem &) = delete;

    // Return when that is done; throw std::runtime_error if it can't be. The modem is to outlive
    // the next unplug().
    void plug(simulated::Modem &modem);
    void unplug();

    // Something has happened to the modem; returns at once.
    void event(simulated::Modem &modem, std::string_view name);

private:
    void want(simulated::Modem *modem);
    void wait();
    void work();
    void follow(simulated::Modem *wanted);
    void connect_to(simulated::Modem &modem);
    void disconnect();
    void report(const char *action);

    std::string directory_;
    pid_t computer_;
    at_front::AnswerFaults &answer_faults_;
    DbusConnection reports_;
    std::unique_ptr<at_front::Front> front_; // of the worker, while plugged in

    std::mutex mutex_; // of all below
    std::condition_variable changed_;
    simulated::Modem *wanted_ = nullptr, *plugged_ = nullptr;
    std::string failure_;
    bool carrier_ = false, new_manager_ = false, ending_ = false;

    ManagerWatch watch_;
    std::thread worker_;
};

// "usb unplug" and "usb plug". Without a modem to unplug they fail.
scenario::Command usb_command(UsbModem *usb, simulated::Modem &modem);

} // namespace cmif_sim

#endif
