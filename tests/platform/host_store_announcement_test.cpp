// Which store the system's daemons use, as every process can find out.
#include "in_child.h"
#include "platform/host_store.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace
{

// A daemon that has announced its store and waits for its end.
class Announcer
{
public:
    explicit Announcer(const char *store)
    {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        process_ = fork();
        if (process_ == 0) {
            close(ends[0]);
            setenv("CMIF_STORE", store, 1);
            host_store_announce();
            require(write(ends[1], "", 1) == 1);
            pause();
        }
        char ready = 0;
        EXPECT_EQ(read(ends[0], &ready, 1), 1);
    }
    ~Announcer()
    {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    Announcer(const Announcer &) = delete;
    Announcer &operator=(const Announcer &) = delete;

private:
    pid_t process_ = -1;
};

TEST(HostStoreAnnouncement, LastsAsLongAsItsDaemon)
{
    EXPECT_STREQ(host_store_announced(), "");
    {
        const Announcer daemon("/tmp/a-store");
        EXPECT_STREQ(host_store_announced(), "/tmp/a-store");
    }
    EXPECT_STREQ(host_store_announced(), "");
    const Announcer next("/tmp/b");
    EXPECT_STREQ(host_store_announced(), "/tmp/b");
}

// With standard input closed, the file gets the descriptor 0.
TEST(HostStoreAnnouncement, MayBeDescriptor0)
{
    const Announcer daemon("/tmp/first");
    close(STDIN_FILENO);
    EXPECT_STREQ(host_store_announced(), "/tmp/first");
    const Announcer other("/tmp/second");
    EXPECT_STREQ(host_store_announced(), "/tmp/first");
}

TEST(HostStoreAnnouncement, LeavesNoDescriptorOpenToAReaderOrAStartedProgram)
{
    constexpr const char *none_is_open =
        "test -z \"$(find /proc/self/fd/ -lname '*store-in-use')\"";
    EXPECT_EQ(in_child([] {
                  host_store_announce();
                  require(std::system(none_is_open) == 0);
              }),
              0);
    const Announcer daemon("/tmp/a-store");
    const int next = dup(STDERR_FILENO);
    close(next);
    EXPECT_STREQ(host_store_announced(), "/tmp/a-store");
    EXPECT_EQ(dup(STDERR_FILENO), next);
}

TEST(HostStoreAnnouncement, IsReadByEveryUser)
{
    const Announcer daemon("/tmp/a-store");
    EXPECT_EQ(in_child([] {
                  require(become_plain_user());
                  require(host_store_announced() == std::string("/tmp/a-store"));
              }),
              0);
}

TEST(HostStoreAnnouncement, StaysWhileAnotherDaemonStarts)
{
    const Announcer daemon("/tmp/first");
    const Announcer other("/tmp/second");
    EXPECT_STREQ(host_store_announced(), "/tmp/first");
}

// A file in the announcement's place, written and locked as another process might do it.
class Forged
{
public:
    Forged(mode_t mode, short lock_type)
    {
        unlink(path);
        file_ = open(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        struct flock lock = {};
        lock.l_type = lock_type;
        EXPECT_EQ(fchmod(file_, mode), 0);
        EXPECT_EQ(fcntl(file_, F_OFD_SETLK, &lock), 0);
        EXPECT_EQ(write(file_, "/tmp/forged", 11), 11);
    }
    ~Forged()
    {
        close(file_);
        unlink(path);
    }
    Forged(const Forged &) = delete;
    Forged &operator=(const Forged &) = delete;

    void belongs_to(uid_t user) const { EXPECT_EQ(fchown(file_, user, gid_t(-1)), 0); }

private:
    static constexpr const char *path = "/tmp/cmif-store-in-use";
    int file_ = -1;
};

TEST(HostStoreAnnouncement, CountsOnlyIfItsOwnerAloneCanWriteAndLockIt)
{
    const struct {
        mode_t mode;
        short lock;
        const char *announced;
    } rows[] = {
        {0644, F_WRLCK, "/tmp/forged"},
        {0600, F_WRLCK, "/tmp/forged"},
        {0644, F_RDLCK, ""},
        {0644, F_UNLCK, ""},
        {0646, F_WRLCK, ""},
        {0664, F_WRLCK, ""},
    };
    for (const auto &row : rows) {
        const Forged file(row.mode, row.lock);
        EXPECT_STREQ(host_store_announced(), row.announced) << row.mode << ' ' << row.lock;
    }
}

TEST(HostStoreAnnouncement, TakesThePlaceOfOneThatDoesNotCount)
{
    const Forged file(0666, F_WRLCK);
    const Announcer daemon("/tmp/a-store");
    EXPECT_STREQ(host_store_announced(), "/tmp/a-store");
}

TEST(HostStoreAnnouncement, OfRootTakesThePlaceOfAnotherUsers)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "needs root";
    for (const uid_t user : {1U, 65534U}) {
        const Forged file(0644, F_WRLCK);
        file.belongs_to(user);
        EXPECT_STREQ(host_store_announced(), "/tmp/forged") << user;
        const Announcer daemon("/tmp/a-store");
        EXPECT_STREQ(host_store_announced(), "/tmp/a-store") << user;
    }
}

} // namespace
