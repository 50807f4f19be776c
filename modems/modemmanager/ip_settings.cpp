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

} // namespace

IpSettings ip_settings_of(const View &view)
{
    IpSettings settings;
    settings.interface = view.of_bearer("Interface").text();
    add(settings, AF_INET, view.of_bearer("Ip4Config").dictionary());
    add(settings, AF_INET6, view.of_bearer("Ip6Config").dictionary());
    return settings;
}

} // namespace modem_manager
