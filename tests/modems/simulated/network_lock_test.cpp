// The modem's lock to a network.
#include "modems/simulated/network_lock.h"

#include <gtest/gtest.h>

namespace
{

using namespace simulated;

constexpr const char *key = NetworkLock::control_key;
constexpr const char *home = "00101";

TEST(NetworkLock, RejectsSimsOfOtherNetworks)
{
    NetworkLock lock;
    EXPECT_FALSE(lock.rejects(home));
    EXPECT_EQ(lock.lock("00102", key), CmeError::ok);
    EXPECT_TRUE(lock.rejects(home));
    EXPECT_EQ(lock.lock(home, key), CmeError::ok);
    EXPECT_FALSE(lock.rejects(home));
    EXPECT_EQ(lock.lock("999700", key), CmeError::ok);
    EXPECT_EQ(lock.unlock(key), CmeError::ok);
    EXPECT_FALSE(lock.rejects(home));
    EXPECT_EQ(lock.unlock(key), CmeError::not_allowed);
}

TEST(NetworkLock, RefusesMalformedCodes)
{
    NetworkLock lock;
    for (const char *network : {"", "0010", "0010203", "0010a"})
        EXPECT_EQ(lock.lock(network, key), CmeError::incorrect_parameters) << network;
    EXPECT_EQ(lock.lock("00102", "1122334"), CmeError::incorrect_parameters);
    EXPECT_EQ(lock.attempts(), 10);
    EXPECT_FALSE(lock.rejects(home));
}

TEST(NetworkLock, TenWrongKeysEndIt)
{
    NetworkLock lock;
    lock.lock("00102", key);
    for (int left = 9; left >= 0; --left) {
        EXPECT_EQ(lock.unlock("00000000"), CmeError::incorrect_password);
        EXPECT_EQ(lock.attempts(), left);
    }
    EXPECT_EQ(lock.unlock(key), CmeError::not_allowed);
    EXPECT_EQ(lock.lock(home, key), CmeError::not_allowed);
    EXPECT_TRUE(lock.rejects(home));
}

TEST(NetworkLock, TheRightKeyRestoresAllAttempts)
{
    NetworkLock lock;
    EXPECT_EQ(lock.lock("00102", "00000000"), CmeError::incorrect_password);
    EXPECT_EQ(lock.attempts(), 9);
    EXPECT_EQ(lock.lock("00102", key), CmeError::ok);
    EXPECT_EQ(lock.attempts(), 10);
}

} // namespace
