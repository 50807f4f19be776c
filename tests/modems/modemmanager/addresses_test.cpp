// Addresses of a connection on its interface, in a network namespace of the test's own.
#include "modem_fixture.h"
#include "tests/support/redirect.h"

#include <arpa/inet.h>
#include <cstring>
#include <fstream>
#include <ifaddrs.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

using modem_manager::Addresses;
using modem_manager::IpSettings;

// The loopback interface takes addresses and routes like any other, and every kernel has it.
const IpSettings both{
    "lo", {{AF_INET, "192.0.2.10", "192.0.2.1", 24}, {AF_INET6, "2001:db8::10", "", 64}}, 1400};

std::vector<std::string> addresses()
{
    std::vector<std::string> found;
    ifaddrs *all = nullptr;
    EXPECT_EQ(getifaddrs(&all), 0);
    for (const ifaddrs *each = all; each; each = each->ifa_next) {
        char text[INET6_ADDRSTRLEN] = "";
        if (each->ifa_addr && each->ifa_addr->sa_family == AF_INET)
            inet_ntop(AF_INET, &reinterpret_cast<sockaddr_in *>(each->ifa_addr)->sin_addr, text,
                      sizeof text);
        else if (each->ifa_addr && each->ifa_addr->sa_family == AF_INET6)
            inet_ntop(AF_INET6, &reinterpret_cast<sockaddr_in6 *>(each->ifa_addr)->sin6_addr, text,
                      sizeof text);
        if (*text)
            found.emplace_back(text);
    }
    freeifaddrs(all);
    return found;
}

bool has_address(const std::string &address)
{
    const auto all = addresses();
    return std::find(all.begin(), all.end(), address) != all.end();
}

// The default route by this gateway, as /proc shows it.
bool has_route(const std::string &gateway)
{
    std::ifstream routes("/proc/thread-self/net/route");
    in_addr address{};
    inet_pton(AF_INET, gateway.c_str(), &address);
    char wanted[32];
    std::snprintf(wanted, sizeof wanted, "lo\t00000000\t%08X\t", address.s_addr);
    for (std::string line; std::getline(routes, line);)
        if (line.starts_with(wanted))
            return true;
    return false;
}

int mtu()
{
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(ioctl(socket, SIOCGIFMTU, &request), 0);
    close(socket);
    return request.ifr_mtu;
}

class AddressesTest : public ModemTest
{
protected:
    void SetUp() override
    {
        if (unshare(CLONE_NEWNET) != 0)
            GTEST_SKIP() << "no network namespaces here";
    }
};

TEST_F(AddressesTest, AreSetAndTakenAway)
{
    {
        Addresses set;
        set.apply(both);
        EXPECT_TRUE(has_address("192.0.2.10"));
        EXPECT_TRUE(has_address("2001:db8::10"));
        EXPECT_TRUE(has_route("192.0.2.1"));
        EXPECT_EQ(mtu(), 1400);
        set.apply({"lo", {{AF_INET, "192.0.2.11", "192.0.2.2", 24}}, {}});
        EXPECT_FALSE(has_address("192.0.2.10"));
        EXPECT_FALSE(has_address("2001:db8::10"));
        EXPECT_FALSE(has_route("192.0.2.1"));
        EXPECT_TRUE(has_address("192.0.2.11"));
        EXPECT_TRUE(has_route("192.0.2.2"));
    }
    EXPECT_FALSE(has_address("192.0.2.11"));
    EXPECT_FALSE(has_route("192.0.2.2"));
}

TEST_F(AddressesTest, WhatIsWrongIsReportedAndLeavesNothing)
{
    Addresses set;
    testing::internal::CaptureStderr();
    set.apply({"no-such-interface", both.addresses, {}});
    set.apply({"lo", {{AF_INET, "not an address", "", 24}}, {}});
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_NE(errors.find("can't set the address of no-such-interface"), std::string::npos)
        << errors;
    EXPECT_NE(errors.find("can't set the address of lo: Invalid argument"), std::string::npos)
        << errors;
}

TEST_F(AddressesTest, FollowTheConnection)
{
    add_registered();
    raise_bearer("internet.example");
    manager->set(bearer_path(), "Bearer", "{'Interface': <'lo'>}");
    modem_manager::Options options;
    options.apply_address = true;
    start(options);
    EXPECT_TRUE(stand_in::eventually([] { return has_address("192.0.2.10"); }));
    drop_bearer();
    EXPECT_TRUE(stand_in::eventually([] { return !has_address("192.0.2.10"); }));
    raise_bearer("internet.example");
    manager->set(bearer_path(), "Bearer", "{'Interface': <'lo'>}");
    EXPECT_TRUE(stand_in::eventually([] { return has_route("192.0.2.1"); }));
    manager->remove(stand_in::modem_path);
    EXPECT_TRUE(stand_in::eventually([] { return !has_address("192.0.2.10"); }));
}

// By DHCP and PPP a program of its own gets the address: which one is said, once.
TEST_F(AddressesTest, EachKindOfBearer)
{
    const struct {
        const char *bearer, *ipv6, *errors;
    } rows[] = {
        {"'Interface': <'lo'>, 'Ip4Config': <{'method': <uint32 3>}>", "",
         "the network gives lo its address by another way: run a DHCP client on it\n"},
        {"'Interface': <'ttyUSB0'>, 'Ip4Config': <{'method': <uint32 1>}>", "",
         "the network gives ttyUSB0 its address by another way: run pppd on it\n"},
        {"'Interface': <'lo'>, 'Ip6Config': <{'method': <uint32 2>, 'address': <'2001:db8::10'>,"
         " 'prefix': <uint32 64>}>",
         "2001:db8::10", ""},
        {"'Interface': <'lo'>, 'Ip6Config': <{'method': <uint32 3>}>", "", ""},
    };
    add_registered();
    modem_manager::Options options;
    options.apply_address = true;
    for (const auto &row : rows) {
        const Redirect errors(STDERR_FILENO);
        raise_bearer("internet.example", row.bearer);
        start(options);
        EXPECT_TRUE(comes(daemons::ConnectionState::connected)) << row.bearer;
        EXPECT_EQ(status().ipv4_address, "");
        EXPECT_EQ(status().ipv6_address, row.ipv6);
        EXPECT_TRUE(stand_in::eventually([&] { return errors.bytes().ends_with(row.errors); }))
            << errors.bytes();
        EXPECT_TRUE(stand_in::eventually([&] { return !*row.ipv6 || has_address(row.ipv6); }));
        modem.reset();
        EXPECT_EQ(errors.bytes().empty(), !*row.errors) << errors.bytes();
        EXPECT_FALSE(has_address("2001:db8::10"));
        drop_bearer();
    }
}

TEST_F(AddressesTest, AreLeftToOthersUnlessAskedFor)
{
    add_registered();
    raise_bearer("internet.example");
    manager->set(bearer_path(), "Bearer", "{'Interface': <'lo'>}");
    start();
    EXPECT_TRUE(comes([](const ModemStatus &now) { return now.ipv4_address == "192.0.2.10"; }));
    EXPECT_FALSE(has_address("192.0.2.10"));
}

} // namespace
