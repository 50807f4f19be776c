#include "server.h"

#include "boxes.h"
#include "cmif-record/hooks.h"
#include "command_lines.h"
#include "control.h"
#include "daemons/server.h"
#include "daemons/service_lock.h"
#include "platform/host_store.h"
#include "replay_server.h"
#include "sandbox/leftovers.h"
#include "simulation.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <unistd.h>
#include <vector>

namespace cmif_sim
{
namespace
{

using namespace daemons;

void notify_ready(int fd)
{
    if (fd >= 0 && write(fd, "", 1) != 1)
        std::perror("cmif-sim: cannot report readiness");
}

// A program in a box of its own does not see the socket that was made outside it.
std::vector<int> listening(const ServerOptions &options, std::optional<BoxSocket> &own)
{
    if (options.control == -1 || access(options.control_path, F_OK) != 0)
        own.emplace();
    std::vector<int> files{options.control, own ? own->file() : -1};
    std::erase(files, -1);
    return files;
}

int serve_until(const sigset_t &signals, const ServerOptions &options, int ready_fd)
{
    Simulation simulation(options);
    if (!simulation.start())
        return 1;
    std::optional<BoxSocket> socket;
    const ControlServer control(listening(options, socket),
                                {[&simulation](const std::string &lines) {
                                     return run_lines(simulation.commands(), lines);
                                 },
                                 [&simulation] { return simulation.status(); }});
    notify_ready(ready_fd);
    int received = 0;
    sigwait(&signals, &received);
    return 0;
}

} // namespace

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
    return serve_until(signals, options, ready_fd);
} catch (const std::exception &error) {
    std::fprintf(stderr, "cmif-sim: %s\n", error.what());
    return 1;
}

} // namespace cmif_sim
