#include "computer.h"

#include "at_modem.h"
#include "cmif-sim/box/own_store.h"
#include "cmif-sim/box/program.h"
#include "cmif-sim/box/run.h"
#include "cmif-sim/router/serve_commands.h"
#include "daemons/server.h"
#include "device_files.h"
#include "manager.h"
#include "network.h"
#include "policy.h"
#include "sandbox/check.h"
#include "sandbox/sandbox.h"
#include "test_modem.h"
#include "usb_modem.h"

#include <cstdio>
#include <filesystem>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

// The files of the computer: in the box's own /tmp, or this user's.
std::string directory()
{
    const std::string box = "/tmp/cmif-sim-usb";
    return sandbox::shares_namespaces() ? box + "-" + std::to_string(geteuid()) : box;
}

// The modem and its network. All of the box talks to it through ModemManager.
int serve_usb_modem(ServerOptions options, pid_t computer, int ready_fd)
{
    const sigset_t signals = daemons::block_termination_signals();
    become_network();
    UsbModem usb(directory(), bus_socket(directory()), computer, *options.answer_faults);
    Simulation *running = nullptr;
    options.further_commands = [&usb, &options](simulated::Modem &modem) {
        return scenario::Commands{at_front::answer_command(*options.answer_faults),
                                  usb_command(&usb, modem)};
    };
    options.happened = [&](std::string_view name) {
        if (running)
            usb.event(running->modem(), name);
    };
    Simulation simulation(options);
    if (!simulation.start())
        return 1;
    running = &simulation;
    if (simulation.modem().status().connection == daemons::ConnectionState::connected)
        usb.event(simulation.modem(), "connected");
    usb.plug(simulation.modem());
    serve_commands(simulation, options, signals, [ready_fd] { notify_ready(ready_fd); });
    simulation.modem().watch_events({});
    usb.unplug();
    return 0;
}

int serve_modem(const ServerOptions &options, pid_t computer, int ready_fd)
try {
    return sandbox::shares_namespaces() ? serve_test_modem(options, directory(), ready_fd)
                                        : serve_usb_modem(options, computer, ready_fd);
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmif-sim: the modem can't be plugged in: %s\n", error.what());
    return 1;
}

int serve_everyone(int ready_fd)
try {
    serve_policy(bus_socket(directory()), [ready_fd] { notify_ready(ready_fd); });
    return 0;
} catch (const std::exception &) {
    return 0; // the bus has ended
}

// Mounts and networks of this process alone.
void enter_computer()
{
    sandbox::check_errno(unshare(CLONE_NEWNS | CLONE_NEWNET) == 0, "new namespaces");
    sandbox::check_errno(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0,
                         "detach mounts");
    keep_network_rights();
    switch_loopback_on();
    enter_usb_tree(directory());
}

// Of this user alone. It goes at the end where the system's /tmp would keep it.
class Directory
{
public:
    Directory()
    {
        std::filesystem::remove_all(directory());
        sandbox::check_errno(mkdir(directory().c_str(), S_IRWXU) == 0, directory());
    }
    ~Directory()
    {
        std::error_code ignored;
        if (sandbox::shares_namespaces())
            std::filesystem::remove_all(directory(), ignored);
    }
    Directory(const Directory &) = delete;
    Directory &operator=(const Directory &) = delete;
};

int run_inside(const ServerOptions &options, const std::vector<std::string> &command)
try {
    const OwnStore store;
    const Directory files;
    if (sandbox::shares_namespaces())
        std::fputs("cmif-sim: without namespaces the modem has no network interface, and it can't "
                   "be unplugged\n",
                   stderr);
    else
        enter_computer();
    const ChildProcess bus([](int ready_fd) { return run_bus(directory(), ready_fd); });
    const ChildProcess policy(serve_everyone);
    const pid_t self = getpid();
    const ChildProcess modem(
        [&options, self](int ready_fd) { return serve_modem(options, self, ready_fd); });
    if (!bus.is_ready() || !policy.is_ready() || !modem.is_ready())
        return 1;
    const Manager manager(directory(), options.verbose);
    return run_command(command);
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmif-sim: %s\n", error.what());
    return 1;
}

} // namespace

ServerOptions usb_options(ServerOptions options)
{
    options = at_modem_options(std::move(options));
    options.further_commands = [options](simulated::Modem &modem) {
        return scenario::Commands{at_front::answer_command(*options.answer_faults),
                                  usb_command(nullptr, modem)};
    };
    return options;
}

int run_usb(const ServerOptions &options, const std::vector<std::string> &command)
{
    check_installed();
    return run_beside(options, command, run_inside);
}

} // namespace cmif_sim
