// The simulated modem for programs that speak AT.
#ifndef CMIF_SIM_USB_AT_MODEM_H
#define CMIF_SIM_USB_AT_MODEM_H

#include "cmif-sim/router/router.h"

namespace cmif_sim
{

// Without daemons, and with what can go wrong on AT ports.
ServerOptions at_modem_options(ServerOptions options);

// Prints the names of its ports, and serves them until SIGTERM or SIGINT. Returns the exit status:
// 0, or 1 when it can't start.
int serve_at_modem(const ServerOptions &options);

} // namespace cmif_sim

#endif
