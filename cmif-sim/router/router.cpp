#include "router.h"

#include "cmif-record/hooks.h"
#include "cmif-sim/control/box_sockets.h"
#include "cmif-sim/replay/replay_server.h"
#include "daemons/server.h"
#include "sandbox/leftovers.h"
#include "serve_commands.h"

#include <cstdio>
#include <exception>
#include <optional>

namespace cmif_sim
{

int serve(const ServerOptions &options, int ready_fd)
try {
    daemons::Server server;
    const auto signals = server.start(options.at ? sandbox::at_service_lock : "",
                                      options.qmi ? sandbox::qmi_service_lock : "");
    if (!signals)
        return 1;
    if (options.replay) {
        std::optional<BoxSocket> socket;
        return serve_recording(*options.replay, options.pace, *signals, listening(options, socket),
                               [ready_fd] { notify_ready(ready_fd); });
    }
    if (options.record)
        cmif_record::record_to(*options.record);
    Simulation simulation(options);
    if (!simulation.start())
        return 1;
    serve_commands(simulation, options, *signals, [ready_fd] { notify_ready(ready_fd); });
    return 0;
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmif-sim: %s\n", error.what());
    return 1;
}

} // namespace cmif_sim
