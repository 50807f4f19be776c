#include "store_directory.h"

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace host_store
{
namespace
{

// `sudo` leaves another user's run-time directory in the environment.
bool is_own_directory(const char *path)
{
    struct stat found = {};
    return stat(path, &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == geteuid() &&
           access(path, W_OK | X_OK) == 0;
}

std::string choose_directory()
{
    const char *named = std::getenv("CMIF_STORE");
    if (named != nullptr && *named != '\0') {
        std::error_code ignored;
        const std::string absolute = std::filesystem::absolute(named, ignored);
        return absolute.empty() ? named : absolute;
    }
    const char *runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && *runtime == '/' && is_own_directory(runtime))
        return std::string(runtime) + "/cmif-store";
    return "/tmp/cmif-store-" + std::to_string(geteuid());
}

} // namespace

const std::string &store_directory()
{
    // Not a static object: a child forked while a thread initializes one would block forever.
    static constinit std::atomic<const std::string *> chosen{};
    const std::string *path = chosen;
    if (path == nullptr) {
        auto ours = std::make_unique<const std::string>(choose_directory());
        if (chosen.compare_exchange_strong(path, ours.get()))
            path = ours.release(); // never freed: exit handlers may still use the store
    }
    return *path;
}

} // namespace host_store
