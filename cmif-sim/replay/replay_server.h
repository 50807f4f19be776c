// The daemons' place taken by a recording, over the message queues and the store.
#ifndef CMIF_SIM_REPLAY_REPLAY_SERVER_H
#define CMIF_SIM_REPLAY_REPLAY_SERVER_H

#include "cmif-record/reader.h"

#include <csignal>
#include <functional>
#include <vector>

namespace cmif_sim
{

// Answers as recorded until one of `signals`, which are blocked, arrives; calls `ready` when it
// begins to. Tells of itself on the sockets `listening`, and takes no commands there. The exit
// status: 0, or 1 when it can't start.
int serve_recording(const cmif_record::RecordingContents &contents, double pace,
                    const sigset_t &signals, const std::vector<int> &listening,
                    const std::function<void()> &ready);

} // namespace cmif_sim

#endif
