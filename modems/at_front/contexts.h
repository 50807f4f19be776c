// The data connection as a packet context: one of the stored profiles, brought up.
#ifndef MODEMS_AT_FRONT_CONTEXTS_H
#define MODEMS_AT_FRONT_CONTEXTS_H

#include "command.h"

namespace at_front
{

// The network's side of every connection, of the range reserved for documentation.
inline constexpr const char *ipv4_gateway = "192.0.2.1", *ipv4_mask = "255.255.255.0",
                            *name_server = "192.0.2.53";

// The context of the connection that is up, or nothing.
std::optional<int> connected_context(const Device &device);

// Both return when the connection is up or down, or failed.
Answer activate(Call &call, int context);
Answer deactivate(Call &call, int context);

} // namespace at_front

#endif
