// The store of a run: removed at its end, or by the next run when it was killed.
#include "cmif-sim/box/own_store.h"
#include "tests/support/child.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace
{

namespace fs = std::filesystem;

class OwnStore : public testing::Test
{
protected:
    OwnStore() { unsetenv("CMIF_STORE"); }

    static std::string chosen() { return std::getenv("CMIF_STORE"); }
    static void make_folder(const std::string &path)
    {
        fs::create_directory(path);
        std::ofstream(path + "/run.lock") << "";
        std::ofstream(path + "/saved.conf") << "key=value\n";
    }
    // What the store of a run does to a folder that it finds.
    static bool keeps(const std::string &path)
    {
        const cmif_sim::OwnStore next;
        return fs::exists(path);
    }
};

// A process with a store of its own, until it is killed.
class RunProcess
{
public:
    RunProcess() : child_([] { live(); })
    {
        while (child_.output().find('\n') == std::string::npos)
            usleep(1000);
        folder_ = child_.output();
        folder_.pop_back();
    }
    void kill()
    {
        child_.signal(SIGKILL);
        child_.wait();
    }
    const std::string &folder() const { return folder_; }

private:
    static void live()
    {
        const cmif_sim::OwnStore store;
        std::printf("%s\n", std::getenv("CMIF_STORE"));
        (void)fflush(stdout);
        pause();
    }

    Child child_;
    std::string folder_;
};

TEST_F(OwnStore, LastsAsLongAsTheRun)
{
    std::string folder;
    {
        const cmif_sim::OwnStore store;
        folder = chosen();
        EXPECT_EQ(folder.rfind("/tmp/cmif-run-", 0), 0U) << folder;
        EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
        EXPECT_EQ(cmif_sim::chosen_store(), ""); // a run inside this one chooses its own
    }
    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(OwnStore, IsNotNeededWhenTheUserHasChosenOne)
{
    setenv("CMIF_STORE", "/tmp/mine", 1);
    make_folder("/tmp/cmif-run-000000");
    const cmif_sim::OwnStore store;
    EXPECT_EQ(chosen(), "/tmp/mine");
    EXPECT_EQ(cmif_sim::chosen_store(), "/tmp/mine");
    EXPECT_TRUE(fs::exists("/tmp/cmif-run-000000"));
}

TEST_F(OwnStore, IsRemovedByTheNextRunAfterAKill)
{
    RunProcess run;
    EXPECT_TRUE(keeps(run.folder()));
    run.kill();
    EXPECT_TRUE(fs::exists(run.folder()));
    EXPECT_FALSE(keeps(run.folder()));
}

TEST_F(OwnStore, OfARunThatWasKilledAtOnceIsRemoved)
{
    fs::create_directory("/tmp/cmif-run-empty1");
    EXPECT_FALSE(keeps("/tmp/cmif-run-empty1"));
}

TEST_F(OwnStore, DoesNotIncludeFoldersWithoutItsLockOrName)
{
    fs::create_directory("/tmp/cmif-run-others");
    std::ofstream("/tmp/cmif-run-others/file") << "mine";
    EXPECT_TRUE(keeps("/tmp/cmif-run-others"));
    make_folder("/tmp/cmif-other-name");
    EXPECT_TRUE(keeps("/tmp/cmif-other-name"));
}

TEST_F(OwnStore, OfAnotherUserIsNotRemoved)
{
    make_folder("/tmp/cmif-run-theirs");
    if (chown("/tmp/cmif-run-theirs", 65534, 65534) != 0)
        GTEST_SKIP() << "there is only one user here";
    EXPECT_TRUE(keeps("/tmp/cmif-run-theirs"));
}

TEST_F(OwnStore, IsNotFollowedThroughALink)
{
    make_folder("/tmp/elsewhere");
    fs::create_directory_symlink("/tmp/elsewhere", "/tmp/cmif-run-linked");
    EXPECT_TRUE(keeps("/tmp/elsewhere/saved.conf"));
    make_folder("/tmp/cmif-run-lockis");
    fs::remove("/tmp/cmif-run-lockis/run.lock");
    fs::create_symlink("/tmp/elsewhere/run.lock", "/tmp/cmif-run-lockis/run.lock");
    EXPECT_TRUE(keeps("/tmp/cmif-run-lockis"));
}

} // namespace
