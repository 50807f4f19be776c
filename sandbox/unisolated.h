#ifndef SANDBOX_UNISOLATED_H
#define SANDBOX_UNISOLATED_H

#include <functional>

namespace sim
{

enum class Ground { ours_alone, held_for_us };

/*
 * Does `work` over the queues, /tmp and /data that everybody on this machine shares. On ground that
 * is not held for us yet, waits until no other such run is left. Refuses, with a message and the
 * result 1, while anybody uses the queues or marker files; removes what of these the work leaves.
 */
int on_shared_ground(const std::function<int()> &work, Ground ground);

} // namespace sim

#endif
