// Repeats a reading, for --watch.
#ifndef CMIFCTL_WATCH_H
#define CMIFCTL_WATCH_H

#include "cmifctl/cli/command_line.h"

namespace cmifctl
{

// Reads and writes until a signal ends it, which throws Interrupted. A terminal is redrawn;
// elsewhere readings follow each other, as JSON one document a line. The first reading may fail as
// it would alone; after it, a failure takes the reading's place.
[[noreturn]] void watch(const CommandLine &line);

} // namespace cmifctl

#endif
