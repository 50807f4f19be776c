// The daemon, started with the library that records it.
#ifndef CMIF_RECORD_LAUNCH_H
#define CMIF_RECORD_LAUNCH_H

#include "start.h"

#include <string>
#include <vector>

namespace cmif_record
{

// Where libcmif-record.so is: beside this program, or where its installation puts it.
// Fails with std::runtime_error.
std::string library_path();

// Puts `command` in the place of this process. Returns only when it can't be run: the exit status,
// 127 if there is no such program, after a line on standard error.
int become_recorded(const RingPlace &place, const std::string &library,
                    const std::vector<std::string> &command);

} // namespace cmif_record

#endif
