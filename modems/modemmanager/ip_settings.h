// What an interface needs to carry a data connection, as the network has given it to the bearer.
#ifndef MODEMS_MODEMMANAGER_IP_SETTINGS_H
#define MODEMS_MODEMMANAGER_IP_SETTINGS_H

#include "modem_view.h"

namespace modem_manager
{

struct IpAddress {
    int family = 0; // AF_INET or AF_INET6
    std::string address, gateway;
    unsigned prefix = 0;

    bool operator==(const IpAddress &) const = default;
};

struct IpSettings {
    std::string interface;
    std::vector<IpAddress> addresses;
    std::optional<unsigned> mtu;
    std::string client{}; // that gets the IPv4 address, and that only others can run; "" for none

    bool operator==(const IpSettings &) const = default;
};

// Those of the connected bearer. Without an address when there is no such bearer, or when a client
// gets it.
IpSettings ip_settings_of(const ModemView &view);

} // namespace modem_manager

#endif
