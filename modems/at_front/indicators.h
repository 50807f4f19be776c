// The indicators of +CIND, which +CIEV reports when they change.
#ifndef MODEMS_AT_FRONT_INDICATORS_H
#define MODEMS_AT_FRONT_INDICATORS_H

#include "daemons/modem_status.h"

#include <array>

namespace at_front
{

// Signal, service, roaming, and whether the SIM is in: from 1 on their numbers in the reports.
using Indicators = std::array<int, 4>;
inline constexpr const char *indicator_ranges =
    "(\"signal\",(0-5)),(\"service\",(0,1)),(\"roam\",(0,1)),(\"simind\",(0,1))";

Indicators indicators_of(const daemons::ModemStatus &status);

// As +CSQ shows it: 0 to 31, 99 for unknown.
int received_signal(const daemons::ModemStatus &status);

} // namespace at_front

#endif
