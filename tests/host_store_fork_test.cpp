// The development store in children of a program whose threads are at work in it.
#include "support/child.h"
#include "support/store_directory.h"

#include <atomic>
#include <thread>

namespace
{

using HostStoreFork = HostStore;

TEST_F(HostStoreFork, AForkAmidOtherThreadsWorkIsNotStuck)
{
    std::atomic<bool> stop{false};
    std::thread saver([&stop] {
        while (!stop)
            tarnNvramConfig_save();
    });
    std::thread setter([&stop] {
        while (!stop)
            set("thread", "1");
    });
    for (int round = 0; round < 30; ++round) {
        const std::string key = "child" + std::to_string(round);
        EXPECT_EQ(Child([&key] {
                      alarm(5);
                      _exit(set(key, "1") == 0 && get(key) == "1" ? 0 : 1);
                  }).wait(),
                  0);
        EXPECT_EQ(get(key), "1");
    }
    stop = true;
    saver.join();
    setter.join();
}

TEST_F(HostStoreFork, AForkAmidTheFirstUseIsNotStuck)
{
    for (int round = 0; round < 100; ++round) {
        choose(top() / std::to_string(round));
        Child program([] { // which has never used the store
            std::thread user([] { set("thread", "1"); });
            const int status = Child([] {
                                   alarm(5);
                                   _exit(set("child", "1") == 0 && get("child") == "1" ? 0 : 1);
                               }).wait();
            user.join();
            _exit(status);
        });
        ASSERT_EQ(program.wait(), 0) << round;
    }
}

} // namespace
