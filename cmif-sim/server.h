// The simulated modem and the daemons, over the message queues of the namespace they are started
// in.
#ifndef CMIF_SIM_SERVER_H
#define CMIF_SIM_SERVER_H

namespace cmif_sim
{

struct ServerOptions {
    bool verbose = false; // print each record on standard error
    bool at = true;       // run the AT daemon
    bool qmi = true;      // run the QMI daemon
    double pace = 1.0;    // factor on all simulated durations
    unsigned seed = 1;    // of the drifting signal
};

// Serves until SIGTERM or SIGINT and returns the exit status: 0, or 1 when it can't start. Writes
// one byte to `ready_fd`, unless that is negative, when all daemons answer.
int serve(const ServerOptions &options, int ready_fd);

} // namespace cmif_sim

#endif
