// The simulated modem as the daemons see it.
#ifndef MODEMS_SIMULATED_STATUS_H
#define MODEMS_SIMULATED_STATUS_H

#include "modem_state.h"

namespace simulated
{

daemons::ModemStatus status_of(const ModemState &state);

} // namespace simulated

#endif
