// The lock that keeps a second server away from what is served.
#include "daemons/service_lock.h"
#include "tests/support/child.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{

using daemons::ServiceLock;

constexpr const char *path = "/tmp/service.lock";

// Whether another process can take the lock; what it prints goes to `errors`.
bool another_takes_it(std::string &errors)
{
    Redirect redirect(STDERR_FILENO);
    Child other([] {
        ServiceLock lock(path, "the tests are");
        _exit(lock.take() ? 0 : 1);
    });
    const int status = other.wait();
    errors = redirect.bytes();
    return status == 0;
}

TEST(ServiceLock, IsHeldUntilItsObjectEnds)
{
    std::string errors;
    {
        ServiceLock lock(path, "the tests are");
        EXPECT_TRUE(lock.take());
        EXPECT_FALSE(another_takes_it(errors));
        EXPECT_NE(errors.find("the tests are already served by process " +
                              std::to_string(getpid()) + "; stop it first (/tmp/service.lock)\n"),
                  std::string::npos)
            << errors;
    }
    EXPECT_TRUE(another_takes_it(errors));
    EXPECT_EQ(errors, "");
}

// A daemon that is started with standard input closed gets this descriptor.
TEST(ServiceLock, MayBeDescriptor0)
{
    std::string errors;
    close(STDIN_FILENO);
    {
        ServiceLock lock(path, "the tests are");
        EXPECT_TRUE(lock.take());
        EXPECT_EQ(std::filesystem::read_symlink("/proc/self/fd/0"), path);
        EXPECT_FALSE(another_takes_it(errors));
    }
    EXPECT_FALSE(std::filesystem::exists("/proc/self/fd/0"));
    EXPECT_TRUE(another_takes_it(errors));
}

TEST(ServiceLock, NamesItsHolderFromDescriptor0Too)
{
    ServiceLock lock(path, "the tests are");
    ASSERT_TRUE(lock.take());
    Redirect errors(STDERR_FILENO);
    Child other([] {
        close(STDIN_FILENO);
        ServiceLock second(path, "the tests are");
        _exit(second.take() ? 0 : 1);
    });
    EXPECT_EQ(other.wait(), 1);
    EXPECT_NE(errors.bytes().find("served by process " + std::to_string(getpid())),
              std::string::npos)
        << errors.bytes();
}

TEST(ServiceLock, IsForEveryUser)
{
    umask(077);
    ServiceLock lock(path, "the tests are");
    EXPECT_TRUE(lock.take());
    struct stat found = {};
    ASSERT_EQ(stat(path, &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0666U);
}

TEST(ServiceLock, ReportsAFileThatCanNotBeOpened)
{
    Redirect errors(STDERR_FILENO);
    ServiceLock lock("/tmp/missing/service.lock", "the tests are");
    EXPECT_FALSE(lock.take());
    EXPECT_NE(
        errors.bytes().find("can't lock /tmp/missing/service.lock: No such file or directory\n"),
        std::string::npos)
        << errors.bytes();
}

} // namespace
