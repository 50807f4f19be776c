// Registration as +CREG, +CGREG and +CEREG show it.
#ifndef MODEMS_AT_FRONT_REGISTRATION_H
#define MODEMS_AT_FRONT_REGISTRATION_H

#include "daemons/modem_status.h"

#include <string>

namespace at_front
{

// The network's services: of circuits, of packets before LTE, of LTE.
enum class Domain { circuits, packets, lte };

// "1", or with `level` 2 and a network `1,"1A2B","01A2D003",7`.
std::string registration_text(Domain domain, const daemons::ModemStatus &status, int level);

// "+CREG", "+CGREG", "+CEREG"
const char *name_of(Domain domain);

} // namespace at_front

#endif
