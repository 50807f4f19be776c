// Where the development store's directory is, its lock and permissions, and unusable directories.
#include "in_child.h"
#include "store_errors.h"

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>

namespace
{

namespace fs = std::filesystem;

class HostStoreDirectory : public HostStoreErrors
{
protected:
    // Runs `body` as a plain user; false where there is none.
    static bool as_plain_user(const std::function<void()> &body)
    {
        constexpr int no_second_user = 77;
        const int status = in_child([&body] {
            if (!become_plain_user())
                _exit(no_second_user);
            body();
            _exit(HasFailure() ? 1 : 0);
        });
        EXPECT_TRUE(status == 0 || status == no_second_user) << status;
        return status != no_second_user;
    }

    // A directory that belongs to the plain user.
    void give_to_plain_user(const fs::path &directory, mode_t mode) const
    {
        fs::permissions(top(), fs::perms(0755));
        fs::create_directory(directory);
        constexpr uid_t plain_user = 65534;
        if (geteuid() == 0) {
            ASSERT_EQ(chown(directory.c_str(), plain_user, plain_user), 0);
        }
        ASSERT_EQ(chmod(directory.c_str(), mode), 0);
    }
};

std::string default_directory()
{
    return "/tmp/cmif-store-" + std::to_string(geteuid());
}

TEST_F(HostStoreDirectory, IsCmifStoreEvenAfterTheProcessChangesItsDirectory)
{
    ASSERT_EQ(chdir(top().c_str()), 0);
    choose("relative");
    set("key", "value");
    ASSERT_EQ(chdir("/"), 0);
    EXPECT_EQ(host_store_directory(), top() / "relative");
    EXPECT_EQ(in_child([] { require(get("key") == "value"); }), 0);
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_TRUE(fs::exists(top() / "relative" / "saved.conf"));
}

TEST_F(HostStoreDirectory, IsNamedAsGivenInADirectoryThatWasRemoved)
{
    fs::create_directory(top() / "removed");
    ASSERT_EQ(chdir((top() / "removed").c_str()), 0);
    fs::remove(top() / "removed");
    choose("relative");
    EXPECT_STREQ(host_store_directory(), "relative");
    ASSERT_EQ(chdir("/"), 0);
}

TEST_F(HostStoreDirectory, IsInTheRunTimeDirectoryByDefault)
{
    unsetenv("CMIF_STORE");
    setenv("XDG_RUNTIME_DIR", top().c_str(), 1);
    EXPECT_EQ(host_store_directory(), top() / "cmif-store");
    EXPECT_EQ(set("key", "value"), 0);
    EXPECT_TRUE(fs::exists(top() / "cmif-store"));
}

TEST_F(HostStoreDirectory, IsInTmpWithoutAUsableRunTimeDirectory)
{
    write(top() / "file", "");
    ASSERT_EQ(chdir("/"), 0);
    setenv("CMIF_STORE", "", 1);
    for (const std::string &path : {(top() / "missing").string(), (top() / "file").string(),
                                    std::string("tmp"), std::string()}) {
        setenv("XDG_RUNTIME_DIR", path.c_str(), 1);
        EXPECT_EQ(in_child([] { require(host_store_directory() == default_directory()); }), 0)
            << path;
    }
    unsetenv("XDG_RUNTIME_DIR");
    EXPECT_EQ(host_store_directory(), default_directory());
}

TEST_F(HostStoreDirectory, IsInTmpIfTheRunTimeDirectoryIsAnotherUsers)
{
    unsetenv("CMIF_STORE");
    give_to_plain_user(top() / "theirs", 0777);
    if (geteuid() != 0)
        GTEST_SKIP() << "there is only one user here";
    setenv("XDG_RUNTIME_DIR", (top() / "theirs").c_str(), 1);
    EXPECT_EQ(host_store_directory(), default_directory());
}

TEST_F(HostStoreDirectory, IsInTmpIfTheRunTimeDirectoryCanNotBeWrittenOrEntered)
{
    unsetenv("CMIF_STORE");
    for (const mode_t mode : {0500U, 0600U}) {
        const fs::path runtime = top() / std::to_string(mode);
        give_to_plain_user(runtime, mode);
        setenv("XDG_RUNTIME_DIR", runtime.c_str(), 1);
        if (!as_plain_user([] { EXPECT_EQ(host_store_directory(), default_directory()); }))
            GTEST_SKIP() << "there is only one user here";
    }
}

TEST_F(HostStoreDirectory, IsForItsUserAlone)
{
    umask(0);
    set("password", "secret");
    tarnNvramConfig_save();
    EXPECT_EQ(fs::status(store()).permissions(), fs::perms(0700));
    EXPECT_EQ(fs::status(saved()).permissions(), fs::perms(0600));
    EXPECT_EQ(fs::status(database()).permissions(), fs::perms(0600));
}

TEST_F(HostStoreDirectory, LeavesNoDescriptorToAProgramThatIsStarted)
{
    set("key", "value");
    tarnNvramConfig_save();
    EXPECT_EQ(std::system("test -z \"$(find /proc/self/fd/ -lname '*/host-store-*')\""), 0);
}

TEST_F(HostStoreDirectory, LeavesNoDescriptorOpenAfterACall)
{
    set("key", "value");
    const auto before = open_descriptors();
    for (int times = 0; times < 3; ++times) {
        EXPECT_EQ(tarnNvramConfig_save(), 0);
        EXPECT_EQ(host_store_power_cycle(), 0);
    }
    EXPECT_EQ(open_descriptors(), before);
}

// With standard input closed, the lock and the file get the descriptor 0.
TEST_F(HostStoreDirectory, MayBeDescriptor0)
{
    close(STDIN_FILENO);
    EXPECT_EQ(set("key", "value"), 0);
    close(STDIN_FILENO); // which the database may have got
    const auto before = open_descriptors();
    EXPECT_EQ(tarnNvramConfig_save(), 0);
    EXPECT_EQ(host_store_power_cycle(), 0);
    EXPECT_EQ(get("key"), "value");
    EXPECT_EQ(open_descriptors(), before);
    expect_no_error();
}

// A save may take long: only another one waits for it.
TEST_F(HostStoreDirectory, IsOpenedWhileAnotherProcessSaves)
{
    set("key", "value");
    tarnNvramConfig_save();
    const int lock = open((store() / "saved.conf.lock").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);
    EXPECT_EQ(in_child([] { require(get("key") == "value" && set("key", "new") == 0); }), 0);
    Child saver([] { require(tarnNvramConfig_save() == 0); });
    EXPECT_TRUE(saver.still_runs());
    flock(lock, LOCK_UN);
    EXPECT_EQ(saver.wait(), 0);
    close(lock);
}

TEST_F(HostStoreDirectory, WaitsForAnotherProcessThatHoldsTheLock)
{
    set("key", "value");
    const fs::path file = store() / "saved.conf.lock";
    const int lock = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    Child saver([] { require(tarnNvramConfig_save() == 0); });
    EXPECT_TRUE(saver.still_runs());
    EXPECT_FALSE(fs::exists(saved()));
    flock(lock, LOCK_UN);
    EXPECT_EQ(saver.wait(), 0);
    EXPECT_TRUE(fs::exists(saved()));
    close(lock);
}

// The thread that waits opens nothing itself: LMDB allows one opening in each process.
TEST_F(HostStoreDirectory, IsOpenedOnceByThreadsThatUseItFirstAtTheSameTime)
{
    ASSERT_EQ(in_child([] { require(set("key", "value") == 0); }), 0);
    const int lock = open(store().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([] { EXPECT_EQ(get("key"), "value"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    close(lock);
    for (std::thread &thread : threads)
        thread.join();
    int opened = 0;
    for (const auto &entry : fs::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        opened += fs::read_symlink(entry.path(), gone) == database() ? 1 : 0;
    }
    EXPECT_EQ(opened, 2); // LMDB opens a file twice
}

TEST_F(HostStoreDirectory, BelowAFileIsUnusable)
{
    write(top() / "file", "");
    choose(top() / "file" / "store");
    expect_unusable(store().string() + ": Not a directory" + store_hint);
}

TEST_F(HostStoreDirectory, ThatIsAFileIsUnusable)
{
    write(top() / "file", "");
    choose(top() / "file");
    expect_unusable(store().string() + ": Not a directory" + store_hint);
}

TEST_F(HostStoreDirectory, ThatIsASymbolicLinkIsUnusable)
{
    fs::create_directory(top() / "elsewhere");
    fs::create_directory_symlink(top() / "elsewhere", top() / "link");
    choose(top() / "link");
    expect_unusable(store().string() + ": Not a directory" + store_hint);
    EXPECT_TRUE(fs::is_empty(top() / "elsewhere"));
}

// Any user may take the name first. What a store would delete there is not a store's.
TEST_F(HostStoreDirectory, InTmpThatIsALinkIsUnusable)
{
    unsetenv("CMIF_STORE");
    unsetenv("XDG_RUNTIME_DIR");
    write(top() / "running-old.mdb", "mine");
    fs::create_directory_symlink(top(), default_directory());
    expect_unusable(default_directory() + ": Not a directory" + store_hint);
    EXPECT_TRUE(fs::exists(top() / "running-old.mdb"));
}

TEST_F(HostStoreDirectory, WithoutItsParentIsUnusable)
{
    choose(top() / "missing" / "store");
    expect_unusable(store().string() + ": No such file or directory" + store_hint);
}

TEST_F(HostStoreDirectory, OfAnotherUserIsUnusable)
{
    choose("/usr");
    struct stat found = {};
    ASSERT_EQ(stat("/usr", &found), 0);
    if (found.st_uid == geteuid()) {
        fs::create_directory(top() / "theirs");
        choose(top() / "theirs");
        found.st_uid = 12345;
        if (chown(store().c_str(), found.st_uid, 12345) != 0)
            GTEST_SKIP() << "there is only one user here";
    }
    expect_unusable(store().string() + ": belongs to user " + std::to_string(found.st_uid) +
                    ", not to you; set CMIF_STORE to a directory of your own");
}

TEST_F(HostStoreDirectory, ThatCanNotBeReadIsUnusable)
{
    give_to_plain_user(store(), 0300);
    if (!as_plain_user([] { expect_nothing_works(); }))
        GTEST_SKIP() << "there is only one user here";
    expect_error(store().string() + ": Permission denied" + store_hint);
    fs::permissions(store(), fs::perms::owner_all); // so that it can be removed
}

TEST_F(HostStoreDirectory, ThatCanNotBeEnteredOrWrittenIsUnusable)
{
    for (const mode_t mode : {0400U, 0500U}) {
        choose(top() / std::to_string(mode));
        give_to_plain_user(store(), mode);
        if (!as_plain_user([] { expect_nothing_works(); }))
            GTEST_SKIP() << "there is only one user here";
        expect_error_with(store().string() + "/running-");
        expect_error_with(".mdb: Permission denied" + std::string(store_hint) + "\n");
    }
}

TEST_F(HostStoreDirectory, IsUsedOnceItsErrorIsCorrected)
{
    choose(top() / "missing" / "store");
    EXPECT_EQ(set("key", "value"), -1);
    fs::create_directory(top() / "missing");
    EXPECT_EQ(set("key", "value"), 0);
    EXPECT_EQ(get("key"), "value");
}

} // namespace
