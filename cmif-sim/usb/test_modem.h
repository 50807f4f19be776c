// The simulated modem where USB can't be emulated: ModemManager makes a modem of two sockets,
// through the interface that its own tests use.
#ifndef CMIF_SIM_USB_TEST_MODEM_H
#define CMIF_SIM_USB_TEST_MODEM_H

#include "cmif-sim/router/router.h"

namespace cmif_sim
{

// Serves the modem, with its sockets and the D-Bus daemon's in the directory, until SIGTERM or
// SIGINT. The status shows its ports, of which the last is left to other programs. Returns the exit
// status; throws std::exception.
int serve_test_modem(const ServerOptions &options, const std::string &directory, int ready_fd);

} // namespace cmif_sim

#endif
