#include "network.h"

#include "modems/at_front/contexts.h"
#include "sandbox/check.h"

#include <arpa/inet.h>
#include <cstring>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <linux/veth.h>
#include <net/if.h>
#include <netinet/in.h>
#include <sched.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

using sandbox::check_errno;

constexpr const char *own_end = "network0";

// A request to the kernel, with attributes in attributes.
class Request
{
public:
    Request(std::uint16_t type, std::uint16_t flags)
    {
        bytes_.resize(NLMSG_HDRLEN);
        header().nlmsg_type = type;
        header().nlmsg_flags = static_cast<std::uint16_t>(NLM_F_REQUEST | NLM_F_ACK | flags);
        add_interface();
    }
    void add_interface()
    {
        ifinfomsg message{};
        append(&message, sizeof message);
    }
    std::size_t begin(std::uint16_t type)
    {
        const std::size_t offset = bytes_.size();
        rtattr attribute{0, type};
        append(&attribute, sizeof attribute);
        return offset;
    }
    void end(std::size_t offset)
    {
        const auto size = static_cast<std::uint16_t>(bytes_.size() - offset);
        std::memcpy(&bytes_[offset], &size, sizeof size);
        bytes_.resize(NLMSG_ALIGN(bytes_.size()));
    }
    void add(std::uint16_t type, const void *data, std::size_t size)
    {
        const std::size_t offset = begin(type);
        append(data, size);
        end(offset);
    }
    void add(std::uint16_t type, const char *text) { add(type, text, std::strlen(text) + 1); }

    // The kernel's answer: 0 or an error number.
    int send()
    {
        header().nlmsg_len = static_cast<std::uint32_t>(bytes_.size());
        const int file = socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_ROUTE);
        check_errno(file != -1, "netlink");
        char answer[4096];
        const bool answered = ::send(file, bytes_.data(), bytes_.size(), 0) != -1 &&
                              recv(file, answer, sizeof answer, 0) >=
                                  static_cast<ssize_t>(NLMSG_LENGTH(sizeof(nlmsgerr)));
        close(file);
        check_errno(answered, "netlink");
        nlmsgerr error{};
        std::memcpy(&error, answer + NLMSG_HDRLEN, sizeof error);
        return -error.error;
    }

private:
    nlmsghdr &header() { return *reinterpret_cast<nlmsghdr *>(bytes_.data()); }
    void append(const void *data, std::size_t size)
    {
        bytes_.append(static_cast<const char *>(data), size);
        bytes_.resize(NLMSG_ALIGN(bytes_.size()));
    }

    std::string bytes_;
};

void check(int error, const char *step)
{
    errno = error;
    check_errno(error == 0, step);
}

ifreq named(const char *interface)
{
    ifreq request{};
    std::strncpy(request.ifr_name, interface, sizeof request.ifr_name - 1);
    return request;
}

void configure(unsigned long what, ifreq &request, const char *step)
{
    const int file = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const bool done = file != -1 && ioctl(file, what, &request) == 0;
    const int reason = errno;
    close(file);
    check(done ? 0 : reason, step);
}

void switch_interface(const char *name, bool on)
{
    ifreq request = named(name);
    request.ifr_flags = on ? IFF_UP : 0;
    configure(SIOCSIFFLAGS, request, name);
}

void set_address(unsigned long what, const char *address)
{
    ifreq request = named(own_end);
    sockaddr_in value{};
    value.sin_family = AF_INET;
    inet_pton(AF_INET, address, &value.sin_addr);
    std::memcpy(&request.ifr_addr, &value, sizeof value);
    configure(what, request, address);
}

} // namespace

void become_network()
{
    check_errno(unshare(CLONE_NEWNET) == 0, "a network namespace");
}

void add_interface(pid_t computer, const char *name)
{
    const auto process = static_cast<std::uint32_t>(computer);
    Request request(RTM_NEWLINK, NLM_F_CREATE | NLM_F_EXCL);
    request.add(IFLA_IFNAME, own_end);
    const std::size_t link = request.begin(IFLA_LINKINFO);
    request.add(IFLA_INFO_KIND, "veth");
    const std::size_t data = request.begin(IFLA_INFO_DATA), peer = request.begin(VETH_INFO_PEER);
    request.add_interface();
    request.add(IFLA_IFNAME, name);
    request.add(IFLA_NET_NS_PID, &process, sizeof process);
    request.end(peer);
    request.end(data);
    request.end(link);
    check(request.send(), "add a network interface");
    set_address(SIOCSIFADDR, at_front::ipv4_gateway);
    set_address(SIOCSIFNETMASK, at_front::ipv4_mask);
    set_carrier(false);
}

void remove_interface()
{
    Request request(RTM_DELLINK, 0);
    request.add(IFLA_IFNAME, own_end);
    check(request.send(), "remove a network interface");
}

void set_carrier(bool on)
{
    switch_interface(own_end, on);
}

void switch_loopback_on()
{
    switch_interface("lo", true);
}

} // namespace cmif_sim
