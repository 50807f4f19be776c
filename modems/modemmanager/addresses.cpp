#include "addresses.h"

#include "netlink.h"

#include <err.h>
#include <net/if.h>
#include <system_error>

namespace modem_manager
{
namespace
{

int index_of(const std::string &interface)
{
    return static_cast<int>(if_nametoindex(interface.c_str()));
}

} // namespace

void Addresses::apply(const IpSettings &settings)
{
    if (settings == set_)
        return;
    take_away();
    set_ = settings;
    if (!set_.client.empty())
        warnx("the network gives %s its address by another way: run %s on it",
              set_.interface.c_str(), set_.client.c_str());
    try {
        set();
    } catch (const std::system_error &error) {
        warnx("can't set the address of %s: %s", settings.interface.c_str(),
              error.code().message().c_str());
    }
}

void Addresses::set() const
{
    if (set_.addresses.empty())
        return;
    const Netlink netlink;
    const int interface = index_of(set_.interface);
    netlink.set_link(interface, true, set_.mtu);
    for (const IpAddress &address : set_.addresses) {
        netlink.add_address(interface, address);
        netlink.add_default_route(interface, address);
    }
}

// What is not there any more has gone with the interface, or by another hand. One that is up
// without an address does no harm.
void Addresses::take_away()
{
    for (const IpAddress &address : set_.addresses)
        try {
            const Netlink netlink;
            const int interface = index_of(set_.interface);
            netlink.remove_default_route(interface, address);
            netlink.remove_address(interface, address);
        } catch (const std::system_error &) { // NOLINT(bugprone-empty-catch)
        }
    set_ = {};
}

} // namespace modem_manager
