// The simulated router in a process of its own.
#ifndef CMIF_SIM_ROUTER_ROUTER_PROCESS_H
#define CMIF_SIM_ROUTER_ROUTER_PROCESS_H

#include "child_process.h"
#include "router.h"

namespace cmif_sim
{

// Runs as long as this object exists.
class RouterProcess
{
public:
    // Waits until it is ready, or has failed.
    explicit RouterProcess(const ServerOptions &options)
        : process_([&options](int ready_fd) { return serve(options, ready_fd); })
    {
    }

    bool is_ready() const { return process_.is_ready(); }

private:
    ChildProcess process_;
};

} // namespace cmif_sim

#endif
