// A computer in a box: a program beside a ModemManager to which the simulated modem is plugged in.
#ifndef CMIF_SIM_USB_COMPUTER_H
#define CMIF_SIM_USB_COMPUTER_H

#include "cmif-sim/router/router.h"

#include <string>
#include <vector>

namespace cmif_sim
{

// Returns the options for `usb`, whose simulation has no daemons.
ServerOptions usb_options(ServerOptions options);

// The exit status of `command`, or 1 with a message when the box can't be made.
int run_usb(const ServerOptions &options, const std::vector<std::string> &command);

} // namespace cmif_sim

#endif
