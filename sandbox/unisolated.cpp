#include "unisolated.h"

#include "check.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <glob.h>
#include <sys/file.h>
#include <sys/msg.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace sim
{
namespace
{

namespace fs = std::filesystem;

constexpr const char *lock_file = "/tmp/cmif-sandbox.lock";
constexpr key_t queue_keys[] = {899, 900, 1158, 1159};
constexpr const char *marker_patterns[] = {
    "/tmp/lte_qmi_msg_handler_thread_ready",
    "/tmp/modify_profile_in_progress",
    "/tmp/lte_provider_list",
    "/data/debug_lte*.txt",
};

std::vector<std::string> markers()
{
    std::vector<std::string> found;
    for (const char *pattern : marker_patterns) {
        glob_t matches = {};
        if (glob(pattern, 0, nullptr, &matches) == 0)
            found.insert(found.end(), matches.gl_pathv, matches.gl_pathv + matches.gl_pathc);
        globfree(&matches);
    }
    return found;
}

std::vector<key_t> queues()
{
    std::vector<key_t> found;
    for (const key_t key : queue_keys)
        if (msgget(key, 0) != -1 || errno == EACCES)
            found.push_back(key);
    return found;
}

/* Says what is in use and how to free it. */
bool in_use()
{
    std::string names, remedies;
    for (const key_t key : queues()) {
        names += " queue " + std::to_string(key) + ",";
        remedies += " ipcrm -Q " + std::to_string(key) + ";";
    }
    for (const std::string &path : markers()) {
        names += " " + path + ",";
        remedies += " rm " + path + ";";
    }
    if (names.empty())
        return false;
    names.back() = ' ';
    remedies.pop_back();
    say("already in use here:" + names + "- end what uses it, or remove what it left:" + remedies);
    return true;
}

void remove_traces()
{
    for (const key_t key : queues())
        msgctl(msgget(key, 0), IPC_RMID, nullptr);
    std::error_code ignored;
    for (const std::string &path : markers())
        fs::remove_all(path, ignored); // a folder in a file's place too
}

/* Waits for its turn; held as long as this process or a copy of it lives. */
int lock_machine()
{
    int lock = open(lock_file, O_RDWR | O_NOFOLLOW | O_CLOEXEC);
    if (lock == -1 && errno == ENOENT) {
        lock = open(lock_file, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (lock != -1)
            fchmod(lock, 0666); // for whoever comes next, whatever our umask
    }
    need(lock != -1, std::string("open ") + lock_file);
    while (flock(lock, LOCK_EX) == -1)
        need(errno == EINTR, std::string("lock ") + lock_file);
    return lock;
}

class DataFolder
{
public:
    DataFolder() : created_(mkdir("/data", 0777) == 0)
    {
        if (created_)
            chmod("/data", 0777);
        else if (errno != EEXIST)
            say(std::string("no /data for the debug log: ") + std::strerror(errno));
    }
    ~DataFolder()
    {
        std::error_code ignored;
        if (created_)
            fs::remove_all("/data", ignored);
    }
    DataFolder(const DataFolder &) = delete;
    DataFolder &operator=(const DataFolder &) = delete;

private:
    bool created_;
};

} // namespace

int on_shared_ground(const std::function<int()> &work, Ground ground)
try {
    const int lock = ground == Ground::held_for_us ? -1 : lock_machine();
    int status = 1;
    if (!in_use()) {
        const DataFolder data;
        status = work();
        remove_traces();
    }
    close(lock);
    return status;
} catch (const std::exception &failure) {
    say(failure.what());
    return 1;
}

} // namespace sim
