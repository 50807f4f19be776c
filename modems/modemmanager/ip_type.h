// PDP types as ModemManager's families of addresses.
#ifndef MODEMS_MODEMMANAGER_IP_TYPE_H
#define MODEMS_MODEMMANAGER_IP_TYPE_H

#include "daemons/modem_status.h"
#include "names.h"

namespace modem_manager
{

constexpr std::optional<daemons::PdpType> pdp_type_of(unsigned family)
{
    using enum daemons::PdpType;
    switch (family) {
    case ip_family::ipv4:
        return ip;
    case ip_family::ipv6:
        return ipv6;
    case ip_family::ipv4v6:
    case ip_family::ipv4 | ip_family::ipv6:
        return ipv4v6;
    default:
        return std::nullopt;
    }
}

// Over PPP, too, the packets are of one family.
constexpr unsigned ip_family_of(daemons::PdpType type, daemons::IpFamily of_ppp)
{
    using enum daemons::PdpType;
    switch (type) {
    case ip:
        return ip_family::ipv4;
    case ipv6:
        return ip_family::ipv6;
    case ipv4v6:
        return ip_family::ipv4v6;
    case ppp:
        break;
    }
    return of_ppp == daemons::IpFamily::ipv6 ? ip_family::ipv6 : ip_family::ipv4;
}

} // namespace modem_manager

#endif
