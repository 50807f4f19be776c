#include "manager.h"

#include "dbus_connection.h"
#include "sandbox/check.h"

#include <cstdlib>
#include <fstream>
#include <linux/capability.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

constexpr const char *search_path = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin";

struct Program {
    const char *name, *package;
};
constexpr Program bus_daemon = {"dbus-daemon", "dbus"}, manager = {"ModemManager", "modemmanager"};

// "" if it is not installed. Users' PATH often leaves out the directories of daemons.
std::string path_of(const Program &program)
{
    std::string rest = search_path;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        std::string path = rest.substr(0, end) + "/" + program.name;
        if (access(path.c_str(), X_OK) == 0)
            return path;
        rest.erase(0, end + 1);
    }
    return "";
}

void write_configuration(const std::string &path, const std::string &socket)
{
    std::ofstream(path)
        << "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
           " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
           "<busconfig>\n"
           "  <type>session</type>\n"
           "  <listen>unix:path="
        << socket
        << "</listen>\n"
           "  <auth>EXTERNAL</auth>\n"
           "  <policy context=\"default\">\n"
           "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
           "    <allow eavesdrop=\"true\"/>\n"
           "    <allow own=\"*\"/>\n"
           "    <allow user=\"*\"/>\n"
           "  </policy>\n"
           "</busconfig>\n";
}

int run_manager(const std::string &directory, bool verbose, int ready_fd)
{
    if (write(ready_fd, "", 1) != 1)
        return 1;
    // No udev, no logind, no QRTR bus in a box: ports are reported, and nothing else is there.
    return become_program({path_of(manager), "--test-no-udev", "--test-no-suspend-resume",
                           "--test-no-qrtr", "--test-enable",
                           verbose ? "--debug" : "--log-level=INFO"},
                          directory + "/ModemManager.log");
}

void wait_for_object(DbusConnection &bus)
{
    constexpr std::chrono::seconds patience{60};
    bus.limit(patience);
    while (bus.receive().member != "InterfacesAdded") {}
}

} // namespace

void check_installed()
{
    for (const Program &program : {bus_daemon, manager})
        if (path_of(program).empty())
            throw std::runtime_error(std::string(program.name) +
                                     " is not installed; on Debian it is in the package " +
                                     program.package);
}

std::string bus_socket(const std::string &directory)
{
    return directory + "/bus";
}

// The daemon prints its address when it listens: for our caller, the sign that it is ready.
int run_bus(const std::string &directory, int ready_fd)
{
    const std::string configuration = directory + "/bus.conf";
    write_configuration(configuration, bus_socket(directory));
    const int report = dup(ready_fd); // which is not closed by the daemon's start
    return become_program({path_of(bus_daemon), "--config-file=" + configuration, "--nofork",
                           "--nopidfile", "--print-address=" + std::to_string(report)},
                          directory + "/dbus-daemon.log");
}

Manager::Manager(const std::string &directory, bool verbose)
{
    setenv("DBUS_SYSTEM_BUS_ADDRESS", ("unix:path=" + bus_socket(directory)).c_str(), 1);
    DbusConnection news(bus_socket(directory));
    news.ask_for("type='signal',member='InterfacesAdded',path='/org/freedesktop/ModemManager1'");
    process_.emplace([&](int ready_fd) { return run_manager(directory, verbose, ready_fd); });
    try {
        wait_for_object(news);
    } catch (const std::exception &) {
        throw std::runtime_error("ModemManager does not show the modem");
    }
}

// Root has them anyway. Others lose what they have in their own namespace with each new program,
// unless it is ambient.
void keep_network_rights()
{
    if (geteuid() == 0)
        return;
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct rights[2]{};
    syscall(SYS_capget, &header, rights);
    rights[0].inheritable |= 1U << CAP_NET_ADMIN | 1U << CAP_NET_RAW;
    syscall(SYS_capset, &header, rights);
    for (const int right : {CAP_NET_ADMIN, CAP_NET_RAW})
        sandbox::check_errno(prctl(PR_CAP_AMBIENT, PR_CAP_AMBIENT_RAISE, right, 0, 0) == 0,
                             "keep the right to change the network");
}

} // namespace cmif_sim
