// What keeps the daemons from their modem, and what to do about it.
#ifndef CMIFD_MISSING_H
#define CMIFD_MISSING_H

#include "modems/modemmanager/modem.h"

namespace cmifd
{

void print_missing_bus(const std::string &why);

// Prints a line if there is no ModemManager, no permission or no modem; false then.
bool print_what_is_missing(modem_manager::Modem &modem, const std::string &device);

} // namespace cmifd

#endif
