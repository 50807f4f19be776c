// Addresses and routes of the network interfaces of this system.
#ifndef MODEMS_MODEMMANAGER_NETLINK_H
#define MODEMS_MODEMMANAGER_NETLINK_H

#include "ip_settings.h"

namespace modem_manager
{

// Requests to the kernel (rtnetlink). Each throws std::system_error when it is refused.
class Netlink
{
public:
    Netlink();
    ~Netlink();
    Netlink(const Netlink &) = delete;
    Netlink &operator=(const Netlink &) = delete;

    void set_link(int interface, bool up, std::optional<unsigned> mtu) const;
    void add_address(int interface, const IpAddress &address) const;
    void remove_address(int interface, const IpAddress &address) const;

    // The way to everywhere else. Without a gateway it is the interface itself.
    void add_default_route(int interface, const IpAddress &address) const;
    void remove_default_route(int interface, const IpAddress &address) const;

private:
    class Request;

    void address(unsigned short type, unsigned short flags, int interface,
                 const IpAddress &address) const;
    void route(unsigned short type, unsigned short flags, int interface,
               const IpAddress &address) const;
    void send(Request &request) const;

    int socket_;
};

} // namespace modem_manager

#endif
