#include "run.h"

#include "command.h"
#include "router.h"
#include "sandbox/sandbox.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

namespace fs = std::filesystem;

constexpr const char *store_variable = "CMIF_STORE";
constexpr const char *own_store_variable = "CMIF_STORE_OF_RUN"; // the same, if OwnStore has set it

// The store that the user has chosen, "" for none. A run inside another one does not use its store.
std::string chosen_store()
{
    const char *store = std::getenv(store_variable);
    const char *own = std::getenv(own_store_variable);
    const bool chosen = store != nullptr && (own == nullptr || std::strcmp(store, own) != 0);
    return chosen ? store : "";
}

// A new configuration store for this run, unless the user has chosen one.
class OwnStore
{
public:
    OwnStore()
    {
        created_ = chosen_store().empty() && mkdtemp(directory_.data()) != nullptr;
        for (const char *variable : {store_variable, own_store_variable})
            if (created_)
                setenv(variable, directory_.c_str(), 1);
    }
    ~OwnStore()
    {
        std::error_code ignored;
        if (created_)
            fs::remove_all(directory_, ignored);
    }
    OwnStore(const OwnStore &) = delete;
    OwnStore &operator=(const OwnStore &) = delete;

private:
    std::string directory_ = "/tmp/cmif-store-XXXXXX";
    bool created_ = false;
};

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
    const Router router(options);
    if (!router.is_ready()) {
        std::fprintf(stderr, "cmif-sim: the simulated router did not start\n");
        return 1;
    }
    return run_command(command);
}

} // namespace

int run(const ServerOptions &options, const std::vector<std::string> &command)
{
    std::vector<std::string> visible_paths;
    if (const std::string store = chosen_store(); !store.empty()) {
        mkdir(store.c_str(), S_IRWXU); // it can be made visible only if it exists
        visible_paths.push_back(fs::absolute(store));
    }
    const TerminalKept terminal;
    const auto work = [&options, &command, directory = program_directory()] {
        extend_path(directory);
        return run_inside(options, command);
    };
    return sandbox::run_in_sandbox(work, visible_paths);
}

} // namespace cmif_sim
