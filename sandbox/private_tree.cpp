#include "private_tree.h"

#include "check.h"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sched.h>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace sim
{
namespace
{

namespace fs = std::filesystem;

int open_folder(const std::string &path)
{
    return open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
}

/* To the top of all mounts, out of the chroot that may hold us. */
void step_out()
{
    const int self = static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0));
    setns(self, CLONE_NEWNS); // where it fails, only a chroot needs it; a later step will tell
    close(self);
}

/* From here on the host sees none of our mounts. What holds a chroot lies outside of it. */
void detach_mounts()
{
    const int root = open_folder("/");
    step_out();
    need(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0, "detach mounts");
    need(fchdir(root) == 0 && chroot(".") == 0, "return to the root");
    close(root);
}

/* The new root covers the old one: inside a mere chroot, a plain user could nest no sandbox. */
void move_root(const std::string &folder)
{
    const int root = open_folder(folder);
    step_out();
    need(fchdir(root) == 0 && mount(".", "/", nullptr, MS_MOVE, nullptr) == 0 && chroot(".") == 0,
         "enter the new root");
    close(root);
}

/* The topmost folder below /tmp or /data that holds `path`, "" if it lies elsewhere. */
std::string folder_to_keep(const fs::path &path)
{
    auto part = path.begin();
    if (std::distance(part, path.end()) < 3 || *part != "/" ||
        (*++part != "tmp" && *part != "data"))
        return "";
    const fs::path folder = "/" / *part / *std::next(part);
    return fs::is_directory(folder) ? folder.string() : "";
}

struct KeptFolder {
    std::string path;
    int descriptor;
};

/* Opened before anything is mounted over them. */
std::vector<KeptFolder> open_folders(const std::vector<std::string> &paths)
{
    std::vector<KeptFolder> kept;
    for (const std::string &path : paths) {
        const std::string folder = folder_to_keep(path);
        const int descriptor = folder.empty() ? -1 : open_folder(folder);
        if (descriptor != -1)
            kept.push_back({folder, descriptor});
    }
    return kept;
}

/* One entry of the host's root shown in the new one. */
void show(const fs::directory_entry &entry, const fs::path &new_root)
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
    need(mount(entry.path().c_str(), target.c_str(), nullptr, MS_BIND | MS_REC, nullptr) == 0,
         "bind " + entry.path().string());
}

/* An open folder, wherever it lies, at the same path in the new root. */
void show(const KeptFolder &folder, const fs::path &new_root)
{
    const std::string target = new_root.string() + folder.path;
    if (fs::create_directories(target))
        need(fchdir(folder.descriptor) == 0 &&
                 mount(".", target.c_str(), nullptr, MS_BIND | MS_REC, nullptr) == 0,
             "keep " + folder.path);
    close(folder.descriptor);
}

/* A fresh /proc counts the processes of the new name space, and only those. */
void build_root(const fs::path &root, const std::vector<KeptFolder> &kept)
{
    need(mount("cmif-sandbox", root.c_str(), "tmpfs", MS_NOSUID | MS_NODEV, "mode=0755") == 0,
         "mount a root");
    for (const char *folder : {"proc", "tmp", "data"})
        fs::create_directory(root / folder);
    fs::permissions(root / "tmp", fs::perms::all | fs::perms::sticky_bit);
    fs::permissions(root / "data", fs::perms::all);
    need(mount("proc", (root / "proc").c_str(), "proc", MS_NOSUID | MS_NODEV | MS_NOEXEC,
               nullptr) == 0,
         "mount /proc");
    for (const fs::directory_entry &entry : fs::directory_iterator("/"))
        if (!fs::exists(root / entry.path().filename()))
            show(entry, root);
    for (const KeptFolder &folder : kept)
        show(folder, root);
}

} // namespace

void enter_private_tree(const std::vector<std::string> &keep)
{
    const fs::path here = fs::current_path();
    std::vector<std::string> paths = keep;
    paths.push_back(here);
    std::error_code no_proc;
    paths.push_back(fs::read_symlink("/proc/self/exe", no_proc).parent_path());

    detach_mounts();
    const std::vector<KeptFolder> kept = open_folders(paths);
    build_root("/tmp", kept);
    move_root("/tmp");
    need(chdir(here.c_str()) == 0, "return to " + here.string());
}

} // namespace sim
