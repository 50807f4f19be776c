#include "private_tree.h"

#include "check.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sched.h>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace sandbox
{
namespace
{

namespace fs = std::filesystem;

int open_directory(const std::string &path)
{
    return open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
}

// Changes to the root of this mount namespace, out of a chroot that this process may be in. Only a
// process in a chroot needs this; where it fails, one of the next steps fails as well.
void join_own_mount_ns()
{
    const int self = static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0));
    setns(self, CLONE_NEWNS);
    close(self);
}

// From here on the host sees no mount of this process. The mounts of a chroot can be changed from
// outside it only.
void detach_mounts()
{
    const int root = open_directory("/");
    join_own_mount_ns();
    check_errno(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "detach mounts");
    check_errno(fchdir(root) == 0 && chroot(".") == 0, "return to the root");
    close(root);
}

// The new root is moved over the old one: inside a plain chroot, a user without rights could not
// nest another sandbox.
void move_root(const std::string &directory)
{
    const int root = open_directory(directory);
    join_own_mount_ns();
    check_errno(fchdir(root) == 0 && mount(".", "/", nullptr, MS_MOVE, nullptr) == 0 &&
                    chroot(".") == 0,
                "enter the new root");
    close(root);
}

// The topmost directory below /tmp or /data that contains `path`; "" if it is elsewhere.
std::string directory_to_keep(const fs::path &path)
{
    auto part = path.begin();
    if (std::distance(part, path.end()) < 3 || *part != "/" ||
        (*++part != "tmp" && *part != "data"))
        return "";
    const fs::path directory = "/" / *part / *std::next(part);
    return fs::is_directory(directory) ? directory.string() : "";
}

struct OpenDirectory {
    std::string path;
    int descriptor;
};

// Opens what is to stay visible, before anything is mounted over it.
std::vector<OpenDirectory> open_visible(const std::vector<std::string> &paths)
{
    std::vector<OpenDirectory> opened;
    for (const std::string &path : paths) {
        const std::string directory = directory_to_keep(path);
        const int descriptor = directory.empty() ? -1 : open_directory(directory);
        if (descriptor != -1)
            opened.push_back({directory, descriptor});
    }
    return opened;
}

// An entry of the host's root directory.
void bind_into(const fs::path &new_root, const fs::directory_entry &entry)
{
    const std::string target = new_root / entry.path().filename();
    if (entry.is_symlink()) {
        fs::copy_symlink(entry.path(), target);
        return;
    }
    if (entry.is_directory())
        fs::create_directory(target);
    else
        std::ofstream{target};
    check_errno(mount(entry.path().c_str(), target.c_str(), nullptr, MS_BIND | MS_REC, nullptr) ==
                    0,
                "bind " + entry.path().string());
}

// An open directory, at the path that it had. Two visible paths may share one.
void bind_into(const fs::path &new_root, const OpenDirectory &directory)
{
    const std::string target = new_root.string() + directory.path;
    if (fs::create_directories(target))
        check_errno(fchdir(directory.descriptor) == 0 &&
                        mount(".", target.c_str(), nullptr, MS_BIND | MS_REC, nullptr) == 0,
                    "keep " + directory.path);
    close(directory.descriptor);
}

void mount_root(const fs::path &root)
{
    check_errno(mount("cmif-sim", root.c_str(), "tmpfs", MS_NOSUID | MS_NODEV, "mode=0755") == 0,
                "mount a root");
    for (const char *directory : {"proc", "tmp", "data"})
        fs::create_directory(root / directory);
    fs::permissions(root / "tmp", fs::perms::all | fs::perms::sticky_bit);
    fs::permissions(root / "data", fs::perms::all);
    // A new /proc shows the processes of the new namespace only.
    check_errno(mount("proc", (root / "proc").c_str(), "proc", MS_NOSUID | MS_NODEV | MS_NOEXEC,
                      nullptr) == 0,
                "mount /proc");
}

void build_root(const fs::path &root, const std::vector<OpenDirectory> &visible)
{
    mount_root(root);
    for (const fs::directory_entry &entry : fs::directory_iterator("/"))
        if (!fs::exists(root / entry.path().filename()))
            bind_into(root, entry);
    for (const OpenDirectory &directory : visible)
        bind_into(root, directory);
}

} // namespace

void enter_private_tree(const std::vector<std::string> &visible_paths)
{
    const fs::path here = fs::current_path();
    std::vector<std::string> paths = visible_paths;
    paths.push_back(here);
    std::error_code no_proc;
    paths.push_back(fs::read_symlink("/proc/self/exe", no_proc).parent_path());

    detach_mounts();
    const std::vector<OpenDirectory> visible = open_visible(paths);
    build_root("/tmp", visible);
    move_root("/tmp");
    check_errno(chdir(here.c_str()) == 0, "return to " + here.string());
}

} // namespace sandbox
