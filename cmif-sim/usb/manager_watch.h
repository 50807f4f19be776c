// Watches for ModemManagers, each of which has yet to be told of the modem.
#ifndef CMIF_SIM_USB_MANAGER_WATCH_H
#define CMIF_SIM_USB_MANAGER_WATCH_H

#include "dbus_connection.h"

#include <functional>
#include <thread>

namespace cmif_sim
{

inline constexpr const char *manager_name = "org.freedesktop.ModemManager1";
inline constexpr const char *manager_path = "/org/freedesktop/ModemManager1";

// ModemManager's plugin looks up by the model what a modem can do.
inline constexpr const char *managed_model = "TOBY-L210";

class ManagerWatch
{
public:
    // Calls `started` from a thread of its own when a ModemManager comes onto the bus. Throws
    // std::exception when the bus can't be reached.
    ManagerWatch(const std::string &bus, std::function<void()> started);
    ~ManagerWatch();
    ManagerWatch(const ManagerWatch &) = delete;
    ManagerWatch &operator=(const ManagerWatch &) = delete;

private:
    void watch();

    DbusConnection news_;
    std::function<void()> started_;
    std::thread thread_;
};

} // namespace cmif_sim

#endif
