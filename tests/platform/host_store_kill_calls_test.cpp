// Processes that are killed at each system call that they make in the store.
#include "in_child.h"
#include "store_errors.h"
#include "tests/support/traced_child.h"

namespace
{

namespace fs = std::filesystem;

const std::string old_value(3000, 'o'), new_value(4000, 'n');

class HostStoreKilledAtEachCall : public HostStoreErrors
{
protected:
    // Calls `check` after `body` was killed before its first call, its second one and so on, each
    // time from the state that `restore` makes.
    static int kill_at_each(const Traced &traced, const std::function<void()> &restore,
                            const std::function<void()> &check)
    {
        int call = 0;
        for (bool killed = true; killed; ++call) {
            restore();
            killed = killed_before(call, traced);
            check();
            if (HasFailure()) {
                ADD_FAILURE() << "killed before call " << call;
                break;
            }
        }
        return call;
    }

    // Another process can read and write, and it finds one of these values.
    static void expect_usable(const std::string &one, const std::string &other)
    {
        EXPECT_EQ(in_child([&] {
                      const std::string found = get("key");
                      require(found == one || found == other);
                      require(get("steady") == "1");
                      require(set("after", "1") == 0 && get("after") == "1");
                      require(set("after", "") == 0);
                  }),
                  0);
    }
};

TEST_F(HostStoreKilledAtEachCall, OfASetHasTheOldValueOrTheNew)
{
    ASSERT_EQ(set("steady", "1"), 0);
    const Traced setting{[] { get("key"); }, [] { set("key", new_value); }};
    const int calls = kill_at_each(
        setting, [] { ASSERT_EQ(set("key", old_value), 0); },
        [] { expect_usable(old_value, new_value); });
    EXPECT_GT(calls, 2);
    expect_no_error();
}

TEST_F(HostStoreKilledAtEachCall, OfAFirstUseLeavesAStoreThatCanBeUsed)
{
    write(saved(), "key=" + old_value + "\nsteady=1\n");
    const int calls = kill_at_each(
        {[] {}, [] { set("key", new_value); }},
        [this] {
            for (const auto &entry : fs::directory_iterator(store()))
                if (entry.path() != saved())
                    fs::remove(entry.path());
        },
        [] { expect_usable(old_value, new_value); });
    EXPECT_GT(calls, 20);
    expect_no_error();
}

TEST_F(HostStoreKilledAtEachCall, OfASaveLeavesTheOldFileOrTheNew)
{
    ASSERT_EQ(set("steady", "1"), 0);
    ASSERT_EQ(set("key", old_value), 0);
    ASSERT_EQ(tarnNvramConfig_save(), 0);
    const std::string old_file = read(saved());
    ASSERT_EQ(set("key", new_value), 0);
    ASSERT_EQ(tarnNvramConfig_save(), 0);
    const std::string new_file = read(saved());
    const int calls = kill_at_each(
        {[] { get("key"); }, [] { tarnNvramConfig_save(); }}, [&] { write(saved(), old_file); },
        [&] {
            const std::string file = read(saved());
            EXPECT_TRUE(file == old_file || file == new_file) << file;
            expect_usable(new_value, new_value);
        });
    EXPECT_GT(calls, 10);
    EXPECT_EQ(in_child([] { require(tarnNvramConfig_save() == 0); }), 0);
    EXPECT_EQ(read(saved()), new_file);
    EXPECT_FALSE(fs::exists(saved().string() + ".new"));
    expect_no_error();
}

} // namespace
