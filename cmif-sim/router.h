// The simulated router in a process of its own.
#ifndef CMIF_SIM_ROUTER_H
#define CMIF_SIM_ROUTER_H

#include "server.h"

#include <sys/types.h>

namespace cmif_sim
{

// Runs as long as this object exists. In a process group of its own, so that a terminal's interrupt
// does not reach it.
class Router
{
public:
    explicit Router(const ServerOptions &options); // waits until it is ready, or has failed
    ~Router();
    Router(const Router &) = delete;
    Router &operator=(const Router &) = delete;

    bool is_ready() const { return ready_; }

private:
    pid_t process_ = -1;
    bool ready_ = false;
};

} // namespace cmif_sim

#endif
