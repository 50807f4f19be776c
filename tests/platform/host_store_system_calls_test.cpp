// Saving over system calls that fail, are interrupted or do less than asked. What this program
// defines stands in for the C library's functions, in the store as well.
#include "in_child.h"
#include "store_errors.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>

namespace
{

namespace fs = std::filesystem;

struct Script {
    std::vector<std::string> log; // what was synced and renamed, in order
    int sync_error = 0;           // of every fsync of a file
    int directory_sync_error = 0;
    int lock_error = 0;
    int read_error = 0;
    int directory_stat_error = 0;
    bool interrupts = false; // the first read, write and flock
    bool in_pieces = false;  // each write takes 100 bytes at most
    int reads = 0, writes = 0, locks = 0;
    std::function<void()> on_sync = [] {};
};
Script *script = nullptr;

std::string file_name(int descriptor)
{
    return fs::read_symlink("/proc/self/fd/" + std::to_string(descriptor)).filename();
}

// Whether the store's own file or directory is meant, and not a test's.
bool is_scripted(int descriptor)
{
    if (script == nullptr)
        return false;
    const std::string name = file_name(descriptor);
    return name == "store" || name.starts_with("saved.conf");
}

long fail(int error)
{
    errno = error;
    return -1;
}

} // namespace

// What pthread_atfork calls, and the store when it is loaded: fails in a program started for that.
extern "C" int __register_atfork(void (*before)(), void (*in_parent)(), void (*in_child)(),
                                 void *library)
{
    if (std::getenv("ATFORK_FAILS") != nullptr)
        return ENOMEM;
    using Function = int (*)(void (*)(), void (*)(), void (*)(), void *);
    static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "__register_atfork"));
    return original(before, in_parent, in_child, library);
}

extern "C" int fsync(int descriptor)
{
    if (!is_scripted(descriptor))
        return static_cast<int>(syscall(SYS_fsync, descriptor));
    const std::string name = file_name(descriptor);
    script->log.push_back("sync " + name);
    script->on_sync();
    const int error = name == "store" ? script->directory_sync_error : script->sync_error;
    return error != 0 ? static_cast<int>(fail(error)) : 0;
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    if (script != nullptr)
        script->log.push_back("rename " + fs::path(from).filename().string() + " " +
                              fs::path(to).filename().string());
    return static_cast<int>(syscall(SYS_renameat, AT_FDCWD, from, AT_FDCWD, to));
}

extern "C" int fstat(int descriptor, struct stat *status) noexcept
{
    if (is_scripted(descriptor) && script->directory_stat_error != 0 &&
        file_name(descriptor) == "store")
        return static_cast<int>(fail(script->directory_stat_error));
    return static_cast<int>(syscall(SYS_fstat, descriptor, status));
}

extern "C" int flock(int descriptor, int operation) noexcept
{
    if (script != nullptr && operation == LOCK_EX && is_scripted(descriptor)) {
        if (script->interrupts && script->locks++ == 0)
            return static_cast<int>(fail(EINTR));
        if (script->lock_error != 0)
            return static_cast<int>(fail(script->lock_error));
    }
    return static_cast<int>(syscall(SYS_flock, descriptor, operation));
}

extern "C" ssize_t read(int descriptor, void *buffer, std::size_t size)
{
    if (script != nullptr && is_scripted(descriptor)) {
        if (script->interrupts && script->reads++ == 0)
            return fail(EINTR);
        if (script->read_error != 0)
            return fail(script->read_error);
    }
    return syscall(SYS_read, descriptor, buffer, size);
}

extern "C" ssize_t write(int descriptor, const void *buffer, std::size_t size)
{
    if (script != nullptr && is_scripted(descriptor)) {
        if (script->interrupts && script->writes++ == 0)
            return fail(EINTR);
        if (script->in_pieces)
            size = std::min<std::size_t>(size, 100);
    }
    return syscall(SYS_write, descriptor, buffer, size);
}

namespace
{

class HostStoreSystemCalls : public HostStoreErrors
{
protected:
    HostStoreSystemCalls()
    {
        EXPECT_EQ(set("key", std::string(1000, 'v')), 0);
        EXPECT_EQ(tarnNvramConfig_save(), 0);
        old_ = HostStore::read(saved());
        EXPECT_EQ(set("more", "1"), 0);
        script = &script_;
    }
    ~HostStoreSystemCalls() override { script = nullptr; }

    // The save failed, and changed nothing.
    void expect_not_saved(const std::string &error) const
    {
        const auto before = open_descriptors();
        EXPECT_EQ(tarnNvramConfig_save(), -1);
        EXPECT_EQ(open_descriptors(), before);
        EXPECT_EQ(HostStore::read(saved()), old_);
        EXPECT_FALSE(fs::exists(saved().string() + ".new"));
        expect_error(error);
    }

    Script script_;
    std::string old_;
};

TEST_F(HostStoreSystemCalls, ASaveIsOnTheDiskBeforeItReplacesTheFileAndWhenItReturns)
{
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(script_.log,
              (std::vector<std::string>{"sync saved.conf.new", "rename saved.conf.new saved.conf",
                                        "sync store"}));
}

TEST_F(HostStoreSystemCalls, AFileThatCanNotBeSyncedIsNotUsed)
{
    script_.sync_error = EIO;
    expect_not_saved(saved().string() + ": not saved: Input/output error; make room or set "
                                        "CMIF_STORE to a directory that you can write");
}

TEST_F(HostStoreSystemCalls, ADirectoryThatCanNotBeSyncedIsAnError)
{
    script_.directory_sync_error = EIO;
    EXPECT_EQ(tarnNvramConfig_save(), -1);
    expect_error_with(": not saved: Input/output error; make room");
}

TEST_F(HostStoreSystemCalls, ADirectoryThatCanNotBeLockedIsNotUsed)
{
    script_.lock_error = ENOLCK;
    expect_not_saved(store().string() + ": No locks available" + store_hint);
}

TEST_F(HostStoreSystemCalls, ADirectoryWhoseOwnerIsNotKnownIsNotUsed)
{
    script_.directory_stat_error = EIO;
    expect_not_saved(store().string() + ": Input/output error" + store_hint);
}

TEST_F(HostStoreSystemCalls, AFileThatCanNotBeReadIsReportedAndKept)
{
    script_.read_error = EIO;
    EXPECT_EQ(host_store_power_cycle(), 0);
    expect_error(saved().string() +
                 ": Input/output error: this is skipped; correct it and restart cmif-sim; a save "
                 "replaces the file and keeps this one");
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    script_.read_error = 0;
    EXPECT_EQ(HostStore::read(saved().string() + ".damaged-1"), old_);
}

TEST_F(HostStoreSystemCalls, InterruptsAndShortWritesAreContinued)
{
    script_.interrupts = script_.in_pieces = true;
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_GT(script_.reads, 1);
    EXPECT_GT(script_.writes, 10);
    EXPECT_GT(script_.locks, 1);
    expect_no_error();
    EXPECT_EQ(host_store_power_cycle(), 0);
    const std::map<std::string, std::string> expected{{"key", std::string(1000, 'v')},
                                                      {"more", "1"}};
    EXPECT_EQ(all(), expected);
}

// Another thread may start a program at any moment.
TEST_F(HostStoreSystemCalls, ASaveOpensNothingThatAProgramStartedMeanwhileInherits)
{
    int open_ones = 0;
    script_.on_sync = [&open_ones] {
        for (const std::string &name : open_descriptors()) {
            const int descriptor = std::stoi(name), flags = fcntl(descriptor, F_GETFD);
            if (flags == -1 || !is_scripted(descriptor))
                continue;
            EXPECT_NE(flags & FD_CLOEXEC, 0) << file_name(descriptor);
            ++open_ones;
        }
    };
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(open_ones, 5); // the directory and the lock at both syncs, the file at the first
}

// A child that no fork handler knows of has a copy of the lock's descriptor.
TEST_F(HostStoreSystemCalls, ASaveReleasesTheLockEvenIfAChildHasACopy)
{
    std::vector<pid_t> children;
    script_.on_sync = [&children] {
        const long child = syscall(SYS_clone, SIGCHLD, nullptr, nullptr, nullptr, nullptr);
        while (child == 0)
            syscall(SYS_pause);
        children.push_back(static_cast<pid_t>(child));
    };
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    ASSERT_FALSE(children.empty());
    const int lock = open((store() / "saved.conf.lock").c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);
    close(lock);
    for (const pid_t child : children) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
}

TEST_F(HostStoreSystemCalls, ReportsOnceThatForksAreNotHandled)
{
    setenv("ATFORK_FAILS", "1", 1);
    const std::string command = "/proc/" + std::to_string(getpid()) + "/exe --gtest_list_tests";
    EXPECT_EQ(std::system((command + " >/dev/null").c_str()), 0);
    unsetenv("ATFORK_FAILS");
    expect_error("pthread_atfork: Cannot allocate memory; do not fork while using the store");
}

} // namespace
