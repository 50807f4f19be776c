// Processes that outlive their parents and become children of this process, a subreaper.
#ifndef SANDBOX_ORPHANS_H
#define SANDBOX_ORPHANS_H

namespace sandbox
{

// Kills all children of this process, and theirs, and waits until they have ended. Does nothing
// where /proc does not show them.
void kill_orphans();

} // namespace sandbox

#endif
