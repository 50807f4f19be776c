#include "serve_commands.h"

#include "cmif-sim/control/protocol.h"
#include "cmif-sim/control/run_lines.h"

#include <cstdio>
#include <unistd.h>

namespace cmif_sim
{

// A program in a box of its own does not see the socket that was made outside it.
std::vector<int> listening(const ServerOptions &options, std::optional<BoxSocket> &own)
{
    if (options.control == -1 || access(options.control_path, F_OK) != 0)
        own.emplace();
    std::vector<int> files{options.control, own ? own->file() : -1};
    std::erase(files, -1);
    return files;
}

void serve_commands(const Simulation &simulation, const ServerOptions &options,
                    const sigset_t &signals, const std::function<void()> &ready)
{
    std::optional<BoxSocket> socket;
    const ControlServer control(listening(options, socket),
                                {[&simulation](const std::string &lines) {
                                     return run_lines(simulation.commands(), lines);
                                 },
                                 [&simulation] { return simulation.status(); }});
    ready();
    int received = 0;
    sigwait(&signals, &received);
}

void notify_ready(int fd)
{
    if (fd >= 0 && write(fd, "", 1) != 1)
        std::perror("cmif-sim: cannot report readiness");
}

} // namespace cmif_sim
