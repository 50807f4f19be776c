// The errors of D-Bus and of ModemManager, as the daemons answer them.
#ifndef MODEMS_MODEMMANAGER_ERRORS_H
#define MODEMS_MODEMMANAGER_ERRORS_H

#include "daemons/cme_error.h"
#include "glib_ptr.h"

#include <string_view>

namespace modem_manager
{

using daemons::CmeError;

// By its D-Bus name.
CmeError error_of(std::string_view name);

// Returns the error code for a call that failed, here or on the other side.
CmeError error_of(const GError &error);

// Returns whether the error of this name denies the call to this program's user.
bool is_denial(std::string_view name);

} // namespace modem_manager

#endif
