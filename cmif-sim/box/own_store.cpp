#include "own_store.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cmif_sim
{
namespace
{

namespace fs = std::filesystem;

constexpr const char *store_variable = "CMIF_STORE";
constexpr const char *own_store_variable = "CMIF_STORE_OF_RUN"; // the same, if OwnStore has set it
constexpr const char *prefix = "cmif-run-";

// Locks the folder by a file in it: a descriptor, or -1 if another process has it locked or has
// removed the folder. The processes that a run forks share the lock, so it is held until all have
// ended.
int lock_folder(const std::string &folder, int flags)
{
    const std::string path = folder + "/run.lock";
    const int lock = open(path.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC | flags, S_IRUSR | S_IWUSR);
    if (lock == -1)
        return -1;
    struct stat file = {};
    if (flock(lock, LOCK_EX | LOCK_NB) == 0 && fstat(lock, &file) == 0 && file.st_nlink > 0)
        return lock;
    close(lock);
    return -1;
}

bool is_own_folder(const std::string &path)
{
    struct stat found = {};
    return lstat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == geteuid();
}

// A folder without a lock file is just being created, or its run was killed then: it is empty.
void remove_if_stale(const std::string &folder)
{
    std::error_code ignored;
    if (rmdir(folder.c_str()) == 0)
        return;
    const int lock = lock_folder(folder, 0);
    if (lock == -1)
        return;
    fs::remove_all(folder, ignored);
    close(lock);
}

void remove_stale_folders()
{
    std::error_code ignored;
    for (const auto &entry : fs::directory_iterator("/tmp", ignored))
        if (entry.path().filename().string().starts_with(prefix) && is_own_folder(entry.path()))
            remove_if_stale(entry.path());
}

} // namespace

std::string chosen_store()
{
    const char *store = std::getenv(store_variable);
    const char *own = std::getenv(own_store_variable);
    const bool chosen = store != nullptr && (own == nullptr || std::strcmp(store, own) != 0);
    return chosen ? store : "";
}

OwnStore::OwnStore()
{
    if (!chosen_store().empty())
        return;
    remove_stale_folders();
    constexpr int max_tries = 10; // another run may take the new folder for a stale one
    for (int tries = 0; tries < max_tries && lock_ == -1; ++tries) {
        directory_ = std::string("/tmp/") + prefix + "XXXXXX";
        if (mkdtemp(directory_.data()) == nullptr)
            return;
        lock_ = lock_folder(directory_, O_CREAT);
    }
    if (lock_ == -1)
        return;
    for (const char *variable : {store_variable, own_store_variable})
        setenv(variable, directory_.c_str(), 1);
}

OwnStore::~OwnStore()
{
    std::error_code ignored;
    if (lock_ == -1)
        return;
    fs::remove_all(directory_, ignored);
    close(lock_);
}

} // namespace cmif_sim
