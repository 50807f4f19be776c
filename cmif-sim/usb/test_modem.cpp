#include "test_modem.h"

#include "cmif-sim/router/serve_commands.h"
#include "daemons/server.h"
#include "manager.h"
#include "manager_watch.h"
#include "modems/at_front/front.h"
#include "modems/at_front/socket.h"
#include "modems/at_front/terminal.h"

#include <cstdio>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

constexpr std::size_t managed_ports = 2;

at_front::Wires ports_in(const std::string &directory)
{
    at_front::Wires ports;
    for (std::size_t i = 0; i < managed_ports; ++i)
        ports.push_back(
            std::make_unique<at_front::Socket>(directory + "/port" + std::to_string(i)));
    ports.push_back(std::make_unique<at_front::Terminal>());
    return ports;
}

// A name, the plugin of the modem that `usb` plugs in, and the ports.
DbusMessage profile(const std::vector<std::string> &ports)
{
    DbusMessage message;
    message.path = manager_path;
    message.destination = manager_name;
    message.interface = "org.freedesktop.ModemManager1.Test";
    message.member = "SetProfile";
    message.signature = "ssas";
    DbusBody names;
    for (std::size_t i = 0; i < managed_ports; ++i)
        names.add_text(ports[i]);
    DbusBody body;
    body.add_text("cmif-sim");
    body.add_text("u-blox");
    body.add_number(static_cast<std::uint32_t>(names.bytes().size()));
    message.body = body.bytes() + names.bytes();
    return message;
}

} // namespace

int serve_test_modem(const ServerOptions &options, const std::string &directory, int ready_fd)
{
    const sigset_t signals = daemons::block_termination_signals();
    Simulation simulation(options);
    if (!simulation.start())
        return 1;
    const at_front::Front front(simulation.modem(), *options.answer_faults, ports_in(directory),
                                managed_model);
    simulation.set_ports(front.paths());
    DbusConnection reports(bus_socket(directory));
    const ManagerWatch watch(bus_socket(directory), [&] { reports.send(profile(front.paths())); });
    serve_commands(simulation, options, signals, [ready_fd] { notify_ready(ready_fd); });
    return 0;
}

} // namespace cmif_sim
