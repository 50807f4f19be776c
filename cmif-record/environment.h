// How the program hands the ring to the preloaded library: as an open file that children inherit,
// named in the environment.
#ifndef CMIF_RECORD_ENVIRONMENT_H
#define CMIF_RECORD_ENVIRONMENT_H

#include "start.h"

namespace cmif_record
{

// For the programs that this process runs from now on.
void put_into_environment(const RingPlace &place);
// Null when this process is not to be recorded.
Ring *ring_from_environment();

} // namespace cmif_record

#endif
