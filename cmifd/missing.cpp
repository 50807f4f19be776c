#include "missing.h"

#include "daemons/printable.h"

#include <cstdio>

namespace cmifd
{

void print_missing_bus(const std::string &why)
{
    std::fprintf(stderr,
                 "cmifd: no D-Bus system bus: %s\n"
                 "  Install and start dbus; DBUS_SYSTEM_BUS_ADDRESS names another bus.\n",
                 daemons::printable(why).c_str());
}

bool print_what_is_missing(modem_manager::Modem &modem, const std::string &device)
{
    using modem_manager::Presence;
    switch (modem.presence()) {
    case Presence::no_permission:
        std::fputs(
            "cmifd: ModemManager refuses this user\n"
            "  Run as root, or put cmifd.conf into /etc/dbus-1/system.d and cmifd.rules into "
            "/etc/polkit-1/rules.d.\n",
            stderr);
        return false;
    case Presence::no_manager:
        std::fputs("cmifd: no ModemManager on the bus\n"
                   "  Install modemmanager and start it: systemctl start ModemManager\n",
                   stderr);
        return false;
    case Presence::no_modem:
        std::fprintf(stderr,
                     "cmifd: ModemManager has no modem%s%s\n"
                     "  'mmcli -L' lists the modems; a new one takes some seconds.\n",
                     device.empty() ? "" : " at ", daemons::printable(device).c_str());
        return false;
    case Presence::found:
        break;
    }
    return true;
}

} // namespace cmifd
