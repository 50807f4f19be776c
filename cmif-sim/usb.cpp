#include "usb.h"

#include "at_modem.h"
#include "command.h"
#include "daemons/server.h"
#include "manager.h"
#include "own_store.h"
#include "policy.h"
#include "run.h"
#include "sandbox/check.h"
#include "sandbox/sandbox.h"
#include "service.h"
#include "usb_modem.h"
#include "usb_network.h"
#include "usb_tree.h"

#include <cstdio>
#include <filesystem>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

constexpr const char *directory = "/tmp/cmif-sim-usb";

scenario::Commands commands_of(const ServerOptions &options, UsbModem *usb, simulated::Modem &modem)
{
    return {at_front::answer_command(*options.mishaps), usb_command(usb, modem)};
}

// The modem and its network. All of the box talks to it through ModemManager.
int serve_modem(ServerOptions options, pid_t computer, int ready_fd)
try {
    const sigset_t signals = daemons::block_termination_signals();
    become_network();
    UsbModem usb(directory, bus_socket(directory), computer, *options.mishaps);
    Simulation *running = nullptr;
    options.further_commands = [&usb, &options](simulated::Modem &modem) {
        return commands_of(options, &usb, modem);
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
    serve_commands(simulation, options, signals, [ready_fd] {
        if (write(ready_fd, "", 1) != 1)
            std::perror("cmif-sim: cannot report readiness");
    });
    simulation.modem().watch_events({});
    usb.unplug();
    return 0;
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmif-sim: the modem can't be plugged in: %s\n", error.what());
    return 1;
}

int serve_everyone(int ready_fd)
try {
    serve_policy(bus_socket(directory), [ready_fd] {
        if (write(ready_fd, "", 1) != 1)
            std::perror("cmif-sim: cannot report readiness");
    });
    return 0;
} catch (const std::exception &) {
    return 0; // the bus has ended
}

// Mounts and networks of this process alone, also where the sandbox has none.
void enter_computer()
{
    sandbox::check_errno(unshare(CLONE_NEWNS | CLONE_NEWNET) == 0, "new namespaces");
    sandbox::check_errno(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0,
                         "detach mounts");
    std::filesystem::remove_all(directory);
    std::filesystem::create_directory(directory);
    keep_network_rights();
    switch_loopback_on();
    enter_usb_tree(directory);
}

int run_inside(const ServerOptions &options, const std::vector<std::string> &command)
try {
    const OwnStore store;
    enter_computer();
    const ChildProcess bus([](int ready_fd) { return run_bus(directory, ready_fd); });
    const ChildProcess policy(serve_everyone);
    const pid_t self = getpid();
    const ChildProcess modem(
        [&options, self](int ready_fd) { return serve_modem(options, self, ready_fd); });
    if (!bus.is_ready() || !policy.is_ready() || !modem.is_ready())
        return 1;
    const Manager manager(directory, options.verbose);
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
        return commands_of(options, nullptr, modem); // to be checked, not carried out
    };
    return options;
}

int run_usb(const ServerOptions &options, const std::vector<std::string> &command)
{
    check_installed();
    return run_beside(options, command, run_inside);
}

} // namespace cmif_sim
