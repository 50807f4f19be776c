// The development store in forked children of a program whose threads are using it. Each case is
// the first in its process to use the store.
#include "tests/support/child.h"
#include "tests/support/store_directory.h"

#include <chrono>
#include <thread>

namespace
{

constexpr unsigned time_limit = 20; // seconds, after which a blocked child is killed

// Whether this process itself holds a lock: that of the reader table, which a child does not
// inherit.
bool holds_a_lock()
{
    std::ifstream locks("/proc/locks");
    const std::string own = " " + std::to_string(getpid()) + " ";
    for (std::string line; std::getline(locks, line);) {
        if (line.find("POSIX") != std::string::npos && line.find(own) != std::string::npos)
            return true;
    }
    return false;
}

class HostStoreFork : public HostStore
{
protected:
    // In a child: it has opened the store itself, and does not use what it inherited.
    [[noreturn]] static void use(const std::string &key)
    {
        alarm(time_limit);
        const bool works = set(key, "1") == 0 && get(key) == "1";
        _exit(works && holds_a_lock() ? 0 : 1);
    }
};

TEST_F(HostStoreFork, WhileOtherThreadsUseTheStoreDoesNotBlockTheChild)
{
    const auto work = [](const std::stop_token &stop) {
        while (!stop.stop_requested()) {
            set("thread", "1");
            tarnNvramConfig_save();
            std::this_thread::yield();
        }
    };
    const std::jthread first(work), second(work);
    for (int round = 0; round < 30; ++round) {
        const std::string key = "child" + std::to_string(round);
        ASSERT_EQ(Child([&key] { use(key); }).wait(), 0) << round;
        EXPECT_EQ(get(key), "1");
    }
}

// Each round forks at a different moment of the first use.
TEST_F(HostStoreFork, DuringTheFirstUseDoesNotBlockTheChildWhichOpensTheStoreItself)
{
    for (int round = 0; round < 200; ++round) {
        choose(top() / std::to_string(round));
        Child program([round] {
            const std::jthread user([] { set("thread", "1"); });
            const auto moment =
                std::chrono::steady_clock::now() + std::chrono::microseconds(2 * round);
            while (std::chrono::steady_clock::now() < moment)
                continue;
            const int status = Child([] { use("child"); }).wait();
            if (status != 0)
                _exit(status);
        });
        ASSERT_EQ(program.wait(), 0) << round;
    }
}

} // namespace
