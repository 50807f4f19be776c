// The network behind the modem's interface: the other end of a pair, which answers at one address
// while there is a connection.
#ifndef CMIF_SIM_USB_NETWORK_H
#define CMIF_SIM_USB_NETWORK_H

#include <sys/types.h>

namespace cmif_sim
{

// Moves this process, the network, to a network namespace of its own, from which an interface can
// be put into that of another process. Throws std::exception.
void become_network();

// The interface appears there, without a carrier; and goes.
void add_interface(pid_t computer, const char *name);
void remove_interface();

// The carrier comes with a connection.
void set_carrier(bool on);

// Switches the loopback interface of this process's network namespace on.
void switch_loopback_on();

} // namespace cmif_sim

#endif
