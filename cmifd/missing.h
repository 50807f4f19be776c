// What keeps the daemons from their modem, and what to do about it.
#ifndef CMIFD_MISSING_H
#define CMIFD_MISSING_H

#include "modems/modemmanager/modem.h"

namespace cmifd
{

void print_missing_bus(const std::string &why);

// False, after a line on standard error, if ModemManager, the permission or the modem is missing.
bool print_what_is_missing(modem_manager::Modem &modem, const std::string &device);

} // namespace cmifd

#endif
