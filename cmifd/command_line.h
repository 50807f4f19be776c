// The command line of cmifd.
#ifndef CMIFD_COMMAND_LINE_H
#define CMIFD_COMMAND_LINE_H

#include "cli/line.h"
#include "modems/modemmanager/modem.h"

namespace cmifd
{

const cli::Program &tables();

struct Options {
    modem_manager::Options modem;
    bool probe = false;
};
Options options_of(const cli::Arguments &given);

} // namespace cmifd

#endif
