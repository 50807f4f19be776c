#include "ip_settings.h"

#include <sys/socket.h>

namespace modem_manager
{
namespace
{

void add(IpSettings &settings, int family, const Dictionary &values)
{
    const std::string address = find(values, "address").text();
    if (find(values, "method").number() != ip_method::fixed || address.empty())
        return;
    settings.addresses.push_back(
        {family, address, find(values, "gateway").text(),
         static_cast<unsigned>(find(values, "prefix").number().value_or(0))});
    if (const auto mtu = find(values, "mtu").number(); mtu && *mtu > 0)
        settings.mtu = static_cast<unsigned>(*mtu);
}

const char *client_of(const Dictionary &values)
{
    const auto method = find(values, "method").number();
    return method == ip_method::dhcp ? "a DHCP client" : method == ip_method::ppp ? "pppd" : "";
}

} // namespace

IpSettings ip_settings_of(const ModemView &view)
{
    IpSettings settings;
    settings.interface = view.of_bearer("Interface").text();
    const Dictionary ipv4 = view.of_bearer("Ip4Config").dictionary();
    settings.client = client_of(ipv4);
    add(settings, AF_INET, ipv4);
    add(settings, AF_INET6, view.of_bearer("Ip6Config").dictionary());
    return settings;
}

} // namespace modem_manager
