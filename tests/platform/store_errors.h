// What the store prints on standard error in each case.
#ifndef TESTS_PLATFORM_STORE_ERRORS_H
#define TESTS_PLATFORM_STORE_ERRORS_H

#include "tests/support/redirect.h"
#include "tests/support/store_directory.h"

#include <string>
#include <unistd.h>

inline constexpr const char *store_hint = "; set CMIF_STORE to a directory that you can write";

class HostStoreErrors : public HostStore
{
protected:
    [[nodiscard]] std::string errors() const { return errors_.bytes(); }
    // Exactly this line was printed.
    void expect_error(const std::string &line) const
    {
        EXPECT_EQ(errors(), "cmif store: " + line + "\n");
    }
    void expect_no_error() const { EXPECT_EQ(errors(), ""); }
    void expect_error_with(const std::string &part) const
    {
        EXPECT_NE(errors().find(part), std::string::npos) << errors();
    }

    // Every function fails, each time.
    static void expect_nothing_works()
    {
        for (int times = 0; times < 2; ++times) {
            EXPECT_STREQ(tarnNvramConfig_get("key"), "");
            EXPECT_EQ(set("key", "value"), -1);
            EXPECT_EQ(tarnNvramConfig_match("key", ""), 0);
            EXPECT_EQ(tarnNvramConfig_save(), -1);
            EXPECT_EQ(host_store_power_cycle(), -1);
            EXPECT_EQ(host_store_list([](const char *, const char *, void *) {}, nullptr), -1);
        }
    }
    // Nothing works, one line tells why, and no descriptor is left open.
    void expect_unusable(const std::string &line) const
    {
        const auto before = open_descriptors();
        expect_nothing_works();
        EXPECT_EQ(open_descriptors(), before);
        expect_error(line);
    }

private:
    Redirect errors_{STDERR_FILENO};
};

#endif
