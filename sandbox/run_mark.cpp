#include "run_mark.h"

#include "check.h"
#include "leftovers.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace sandbox
{
namespace
{

namespace fs = std::filesystem;

constexpr mode_t only_its_user = S_IRUSR | S_IWUSR;
constexpr mode_t and_creates_data = S_IRWXU; // the mark's mode is all that it contains

std::string mark_path()
{
    return "/tmp/cmif-sim-run-" + std::to_string(geteuid());
}

// Another user's file proves nothing: any user can create one of this name.
bool is_own_mark(struct stat &found)
{
    return lstat(mark_path().c_str(), &found) == 0 && S_ISREG(found.st_mode) &&
           found.st_uid == geteuid();
}

// Whether a process has this file locked, as `cmif-sim serve` does while it serves.
bool is_locked(const char *path)
{
    const int file = open(path, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file == -1)
        return false;
    const bool locked = lockf(file, F_TEST, 0) != 0;
    close(file);
    return locked;
}

} // namespace

RunMark::RunMark()
{
    const mode_t mode = access("/data", F_OK) == 0 ? only_its_user : and_creates_data;
    const int file = open(mark_path().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (file == -1)
        return; // another user's file has the name: a killed run is then not cleaned up after
    fchmod(file, mode);
    close(file);
}

RunMark::~RunMark()
{
    unlink(mark_path().c_str());
}

void clean_up_after_killed_run()
{
    struct stat mark = {};
    if (!is_own_mark(mark) || is_locked(at_service_lock) || is_locked(qmi_service_lock))
        return;
    remove_leftovers();
    std::error_code ignored;
    if ((mark.st_mode & S_IXUSR) != 0)
        fs::remove_all("/data", ignored);
    unlink(mark_path().c_str());
    log_line("cleaned up after a run that was killed");
}

} // namespace sandbox
