// msgget, msgrcv, msgsnd and tarnNvramConfig_set in front of the C library's and the store's. They
// pass on, and note what passes in the recording.
#ifndef CMIF_RECORD_HOOKS_H
#define CMIF_RECORD_HOOKS_H

#include "recording.h"

namespace cmif_record
{

// From now on, in this process and those that it forks. `recording` stays for as long as they run.
void record_to(Recording &recording);

} // namespace cmif_record

#endif
