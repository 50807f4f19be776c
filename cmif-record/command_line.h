// The command line of cmif-record.
#ifndef CMIF_RECORD_COMMAND_LINE_H
#define CMIF_RECORD_COMMAND_LINE_H

#include "cli/line.h"

namespace cmif_record
{

const cli::Program &tables();

} // namespace cmif_record

#endif
