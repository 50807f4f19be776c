// The lock for each request code among callers.
#include "client/code_lock.h"
#include "client/failure.h"
#include "tests/support/child.h"

#include <csignal>
#include <gtest/gtest.h>
#include <memory>
#include <sys/sem.h>
#include <unistd.h>

namespace
{

using client::Channel;
using client::CodeLock;
using client::RequestCode;

constexpr RequestCode enter_pin{Channel::at, 12};
constexpr RequestCode change_pin{Channel::at, 13};
constexpr RequestCode start{Channel::qmi, 4};

void no_pause() {}

bool is_free(RequestCode request)
{
    try {
        const CodeLock lock({request}, 0.01, no_pause);
        return true;
    } catch (const client::Failure &) {
        return false;
    }
}

// A process that holds the lock until it is ended.
std::unique_ptr<Child> holder(const std::vector<RequestCode> &codes)
{
    int ready[2];
    EXPECT_EQ(pipe(ready), 0);
    auto child = std::make_unique<Child>([&] {
        const CodeLock lock(codes, 0, no_pause);
        EXPECT_EQ(write(ready[1], "", 1), 1);
        pause();
    });
    char byte = 0;
    EXPECT_EQ(read(ready[0], &byte, 1), 1);
    return child;
}

TEST(CodeLock, IsHeldForItsLife)
{
    {
        const CodeLock lock({enter_pin}, 1, no_pause);
        EXPECT_FALSE(is_free(enter_pin));
    }
    EXPECT_TRUE(is_free(enter_pin));
}

TEST(CodeLock, KeepsCodesAndChannelsApart)
{
    const CodeLock lock({enter_pin, start}, 1, no_pause);
    EXPECT_TRUE(is_free(change_pin));
    EXPECT_TRUE(is_free({Channel::at, 4}));
    EXPECT_TRUE(is_free({Channel::qmi, 12}));
    EXPECT_FALSE(is_free(start));
}

TEST(CodeLock, TakesAllOfItsCodesOrNone)
{
    const CodeLock other({change_pin}, 1, no_pause);
    EXPECT_THROW(CodeLock({enter_pin, change_pin}, 0.01, no_pause), client::Failure);
    EXPECT_TRUE(is_free(enter_pin));
}

TEST(CodeLock, IsReleasedWhenItsHolderIsKilled)
{
    const std::unique_ptr<Child> child = holder({enter_pin});
    EXPECT_FALSE(is_free(enter_pin));
    child->signal(SIGKILL);
    child->wait();
    EXPECT_TRUE(is_free(enter_pin));
}

TEST(CodeLock, NamesTheHolderWhenTimeIsUp)
{
    const std::unique_ptr<Child> child = holder({enter_pin});
    try {
        const CodeLock lock({enter_pin}, 0.1, no_pause);
        FAIL() << "two holders";
    } catch (const client::Failure &failure) {
        EXPECT_EQ(failure.status(), client::Exit::no_answer);
        const std::string holder = ", made by process " + std::to_string(child->process()) + " (";
        EXPECT_NE(std::string(failure.what()).find(holder), std::string::npos) << failure.what();
    }
    EXPECT_EQ(client::lock_process(enter_pin), child->process());
    EXPECT_EQ(client::lock_process(change_pin), std::nullopt);
}

TEST(CodeLock, GivesUpWhenThePauseThrows)
{
    const std::unique_ptr<Child> child = holder({enter_pin});
    EXPECT_THROW(CodeLock({enter_pin}, 0, [] { throw 1; }), int);
}

TEST(CodeLock, SurvivesTheRemovalOfItsSemaphores)
{
    const CodeLock lock({enter_pin}, 1, no_pause);
    ASSERT_EQ(semctl(semget(0x434d4946, 0, 0), 0, IPC_RMID), 0);
    EXPECT_TRUE(is_free(change_pin));
}

TEST(CodeLock, HasNoPlaceForUnknownCodes)
{
    const CodeLock one({{Channel::at, 1000}}, 1, no_pause);
    EXPECT_TRUE(is_free({Channel::at, 1000}));
    EXPECT_EQ(client::slot_of({Channel::at, 31}), 31);
    EXPECT_EQ(client::slot_of({Channel::at, 32}), std::nullopt);
    EXPECT_EQ(client::slot_of({Channel::qmi, 1}), 33);
    EXPECT_EQ(client::slot_of({Channel::at, 0}), std::nullopt);
    EXPECT_EQ(client::slot_of({Channel::none, 1}), std::nullopt);
}

} // namespace
