// A stand-in for PolicyKit on a private D-Bus: every caller may do everything.
#ifndef CMIF_SIM_USB_POLICY_H
#define CMIF_SIM_USB_POLICY_H

#include <functional>
#include <string>

namespace cmif_sim
{

// Serves the bus that listens at this path until it goes. Calls `ready` once callers are answered.
// Throws std::exception if the bus can't be reached.
void serve_policy(const std::string &bus_path, const std::function<void()> &ready);

} // namespace cmif_sim

#endif
