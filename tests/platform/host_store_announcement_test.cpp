// Which store the system's daemons use, as every process can find out.
#include "in_child.h"
#include "platform/host_store.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
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

} // namespace
