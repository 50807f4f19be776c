#include "netlink.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <linux/rtnetlink.h>
#include <net/if.h>
#include <sys/socket.h>
#include <system_error>
#include <unistd.h>

namespace modem_manager
{
namespace
{

// Behind a wired or a wireless network, which other managers give smaller ones.
constexpr unsigned route_metric = 700;

[[noreturn]] void fail(int error, const char *what)
{
    throw std::system_error(error, std::generic_category(), what);
}

} // namespace

// A message with its attributes.
class Netlink::Request
{
public:
    template <class Body>
    Request(unsigned short type, unsigned short flags, const Body &body)
    {
        static_assert(sizeof(nlmsghdr) + sizeof body < room / 2);
        header()->nlmsg_type = type;
        header()->nlmsg_flags = static_cast<unsigned short>(NLM_F_REQUEST | NLM_F_ACK | flags);
        std::memcpy(NLMSG_DATA(header()), &body, sizeof body);
        header()->nlmsg_len = NLMSG_LENGTH(sizeof body);
    }

    void add(unsigned short type, const void *value, std::size_t size)
    {
        auto *const attribute =
            reinterpret_cast<rtattr *>(bytes_ + NLMSG_ALIGN(header()->nlmsg_len));
        attribute->rta_type = type;
        attribute->rta_len = static_cast<unsigned short>(RTA_LENGTH(size));
        std::memcpy(RTA_DATA(attribute), value, size);
        header()->nlmsg_len =
            static_cast<unsigned>(NLMSG_ALIGN(header()->nlmsg_len) + RTA_ALIGN(attribute->rta_len));
    }
    void add(unsigned short type, unsigned number) { add(type, &number, sizeof number); }
    void add(unsigned short type, int family, const std::string &address)
    {
        unsigned char bytes[sizeof(in6_addr)];
        if (inet_pton(family, address.c_str(), bytes) != 1)
            fail(EINVAL, address.c_str());
        add(type, bytes, family == AF_INET ? sizeof(in_addr) : sizeof(in6_addr));
    }

    nlmsghdr *header() { return reinterpret_cast<nlmsghdr *>(bytes_); }

private:
    static constexpr std::size_t room = 256; // two addresses and some numbers
    alignas(nlmsghdr) char bytes_[room] = {};
};

Netlink::Netlink() : socket_(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE))
{
    if (socket_ == -1)
        fail(errno, "netlink");
}

Netlink::~Netlink()
{
    close(socket_);
}

// Waits for the kernel's answer, which comes at once.
void Netlink::send(Request &request) const
{
    constexpr std::size_t answer_room = 4096;
    alignas(nlmsghdr) char answer[answer_room];
    if (::send(socket_, request.header(), request.header()->nlmsg_len, 0) == -1 ||
        recv(socket_, answer, sizeof answer, 0) <
            static_cast<ssize_t>(NLMSG_LENGTH(sizeof(nlmsgerr))))
        fail(errno, "netlink");
    const auto *const error =
        static_cast<const nlmsgerr *>(NLMSG_DATA(reinterpret_cast<nlmsghdr *>(answer)));
    if (error->error != 0)
        fail(-error->error, "netlink");
}

void Netlink::set_link(int interface, bool up, std::optional<unsigned> mtu) const
{
    ifinfomsg body{};
    body.ifi_index = interface;
    body.ifi_flags = up ? IFF_UP : 0;
    body.ifi_change = IFF_UP;
    Request request(RTM_NEWLINK, 0, body);
    if (mtu)
        request.add(IFLA_MTU, *mtu);
    send(request);
}

void Netlink::address(unsigned short type, unsigned short flags, int interface,
                      const IpAddress &address) const
{
    ifaddrmsg body{};
    body.ifa_family = static_cast<unsigned char>(address.family);
    body.ifa_prefixlen = static_cast<unsigned char>(address.prefix);
    body.ifa_index = static_cast<unsigned>(interface);
    Request request(type, flags, body);
    request.add(IFA_LOCAL, address.family, address.address);
    request.add(IFA_ADDRESS, address.family, address.address);
    send(request);
}

void Netlink::add_address(int interface, const IpAddress &address) const
{
    this->address(RTM_NEWADDR, NLM_F_CREATE | NLM_F_REPLACE, interface, address);
}

void Netlink::remove_address(int interface, const IpAddress &address) const
{
    this->address(RTM_DELADDR, 0, interface, address);
}

void Netlink::route(unsigned short type, unsigned short flags, int interface,
                    const IpAddress &address) const
{
    rtmsg body{};
    body.rtm_family = static_cast<unsigned char>(address.family);
    body.rtm_table = RT_TABLE_MAIN;
    body.rtm_protocol = RTPROT_STATIC;
    body.rtm_scope = address.gateway.empty() ? RT_SCOPE_LINK : RT_SCOPE_UNIVERSE;
    body.rtm_type = RTN_UNICAST;
    Request request(type, flags, body);
    request.add(RTA_OIF, static_cast<unsigned>(interface));
    request.add(RTA_PRIORITY, route_metric);
    if (!address.gateway.empty())
        request.add(RTA_GATEWAY, address.family, address.gateway);
    send(request);
}

void Netlink::add_default_route(int interface, const IpAddress &address) const
{
    route(RTM_NEWROUTE, NLM_F_CREATE | NLM_F_REPLACE, interface, address);
}

void Netlink::remove_default_route(int interface, const IpAddress &address) const
{
    route(RTM_DELROUTE, 0, interface, address);
}

} // namespace modem_manager
