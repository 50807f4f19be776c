// ModemManager and the D-Bus daemon that it needs, both of this computer, run for one box.
#ifndef CMIF_SIM_USB_MANAGER_H
#define CMIF_SIM_USB_MANAGER_H

#include "cmif-sim/router/child_process.h"

#include <optional>
#include <string>

namespace cmif_sim
{

// Fails with a std::runtime_error that names the missing package.
void check_installed();

std::string bus_socket(const std::string &directory);

// Becomes a D-Bus daemon on which every user of this box may do everything. Reports to `ready_fd`
// when it takes connections. Returns an exit status if it can't be run.
int run_bus(const std::string &directory, int ready_fd);

// ModemManager, with its log in the directory. This process and its children find the bus.
class Manager
{
public:
    // Waits until the modem is there for its users. Throws std::runtime_error when it does not
    // come.
    Manager(const std::string &directory, bool verbose);

private:
    std::optional<ChildProcess> process_;
};

// Lets this process and the programs that it starts change the network of its namespace.
void keep_network_rights();

} // namespace cmif_sim

#endif
