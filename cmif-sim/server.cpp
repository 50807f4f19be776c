#include "server.h"

#include "boxes.h"
#include "cmif-record/hooks.h"
#include "daemons/server.h"
#include "daemons/service_lock.h"
#include "platform/host_store.h"
#include "replay_server.h"
#include "sandbox/leftovers.h"
#include "service.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <unistd.h>
#include <vector>

namespace cmif_sim
{
using namespace daemons;

int serve(const ServerOptions &options, int ready_fd)
try {
    ServiceLock at_lock(sandbox::at_service_lock, "the AT queues are");
    ServiceLock qmi_lock(sandbox::qmi_service_lock, "the QMI queues are");
    if ((options.at && !at_lock.take()) || (options.qmi && !qmi_lock.take()))
        return 1;
    // Two modems in one store would overwrite each other's values.
    const std::string store = host_store_directory();
    ServiceLock store_lock(store + "/router.lock", "the store is");
    if (has_store_directory(store) && !store_lock.take())
        return 1;
    const sigset_t signals = block_termination_signals();
    if (host_store_power_cycle() != 0)
        return 1;
    host_store_announce();
    if (options.replay) {
        std::optional<BoxSocket> socket;
        return serve_recording(*options.replay, options.pace, signals, listening(options, socket),
                               [ready_fd] { notify_ready(ready_fd); });
    }
    if (options.record)
        cmif_record::record_to(*options.record);
    Simulation simulation(options);
    if (!simulation.start())
        return 1;
    serve_commands(simulation, options, signals, [ready_fd] { notify_ready(ready_fd); });
    return 0;
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmif-sim: %s\n", error.what());
    return 1;
}

} // namespace cmif_sim
