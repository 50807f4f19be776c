// The daemons over a modem that ModemManager drives.
#ifndef CMIFD_SERVER_H
#define CMIFD_SERVER_H

#include "command_line.h"

namespace cmifd
{

// Serves until SIGTERM or SIGINT and returns the exit status: 0, or 1 when it can't start.
int serve(const Options &options);

// Prints what the modem can do for each request.
int probe(const Options &options);

} // namespace cmifd

#endif
