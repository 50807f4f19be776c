#include "run.h"

#include "cmif-sim/control/box_sockets.h"
#include "cmif-sim/router/router_process.h"
#include "own_store.h"
#include "program.h"
#include "sandbox/sandbox.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

namespace fs = std::filesystem;

// To be called outside the sandbox, whose /proc does not show where this program came from.
fs::path program_directory()
{
    std::error_code no_proc;
    return fs::read_symlink("/proc/self/exe", no_proc).parent_path();
}

// Lets the shell find `cmifctl` beside this program.
void extend_path(const fs::path &directory)
{
    const char *path = std::getenv("PATH");
    if (!directory.empty())
        setenv("PATH", (directory.string() + ":" + (path ? path : "/usr/bin:/bin")).c_str(), 1);
}

int run_inside(const ServerOptions &options, const std::vector<std::string> &command)
{
    const OwnStore store;
    const RouterProcess router(options);
    if (!router.is_ready()) {
        std::fprintf(stderr, "cmif-sim: the simulated router did not start\n");
        return 1;
    }
    return run_command(command);
}

} // namespace

int run_beside(const ServerOptions &options, const std::vector<std::string> &command,
               const Inside &inside)
{
    std::vector<std::string> visible_paths;
    if (const std::string store = chosen_store(); !store.empty()) {
        mkdir(store.c_str(), S_IRWXU); // it can be made visible only if it exists
        visible_paths.push_back(fs::absolute(store));
    }
    const TerminalGuard terminal;
    const BoxSocket socket;
    ServerOptions reachable = options;
    reachable.control = socket.file();
    reachable.control_path = socket.path().c_str();
    const auto work = [&reachable, &command, &inside, directory = program_directory()] {
        extend_path(directory);
        return inside(reachable, command);
    };
    return sandbox::run_in_sandbox(work, visible_paths);
}

int run(const ServerOptions &options, const std::vector<std::string> &command)
{
    return run_beside(options, command, run_inside);
}

} // namespace cmif_sim
