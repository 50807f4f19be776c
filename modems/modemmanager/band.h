// A radio channel's number, and the band in which it lies.
#ifndef MODEMS_MODEMMANAGER_BAND_H
#define MODEMS_MODEMMANAGER_BAND_H

#include "local_state.h"

namespace modem_manager
{

// 3GPP TS 36.101, 25.101 and 45.005: by the number of the downlink channel. What is unknown is "".
CellInfo lte_cell(std::optional<long long> earfcn);
CellInfo umts_cell(std::optional<long long> uarfcn);
CellInfo gsm_cell(std::optional<long long> arfcn);

} // namespace modem_manager

#endif
