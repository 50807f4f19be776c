// What comes between a recorded process and its recording: nothing is lost, or it is counted.
#include "recording_fixture.h"

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>

namespace
{

class Losses : public RecordingFixture
{
protected:
    void set_values(int count, const std::string &value) const
    {
        for (int i = 0; i < count; ++i)
            recording().add_setting("key_" + std::to_string(i), value);
    }
    // The lines that say how many are lost are taken out, and their numbers added up.
    static int take_lost(std::vector<Json> &lines)
    {
        int count = 0;
        std::erase_if(lines, [&count](const Json &line) {
            if (line["type"] != "lost")
                return false;
            count += line["count"].get<int>();
            return true;
        });
        return count;
    }
    void limit_file(rlim_t size) const
    {
        const rlimit limit{size, RLIM_INFINITY};
        ASSERT_EQ(prlimit(writer(), RLIMIT_FSIZE, &limit, nullptr), 0);
    }
};

// More than the ring holds, several times, and of sizes that end anywhere in it.
TEST_F(Losses, DoNotOccurHoweverMuchIsRecorded)
{
    constexpr std::size_t count = 20'000;
    start();
    for (std::size_t i = 0; i < count; ++i)
        recording().add_setting("number", std::to_string(i) + std::string(i % 311, 'x'));
    const auto found = events();
    ASSERT_EQ(found.size(), count);
    for (std::size_t i = 0; i < count; ++i)
        ASSERT_EQ(found[i]["value"], std::to_string(i) + std::string(i % 311, 'x'));
}

// A daemon goes on, after a wait, while nothing is written.
TEST_F(Losses, AreCountedWhileTheWriterIsStopped)
{
    constexpr int count = 1500;
    start();
    set_values(1, "first");
    ASSERT_EQ(lines().size(), 2U);
    kill(writer(), SIGSTOP);
    set_values(count, std::string(1000, 'x'));
    kill(writer(), SIGCONT);
    auto found = events();
    set_values(1, "last");
    found = events();
    const int lost = take_lost(found);
    EXPECT_GT(lost, 300);
    EXPECT_LT(lost, 700);
    EXPECT_EQ(static_cast<int>(found.size()) + lost, count + 2);
    EXPECT_EQ(found.back()["value"], "last");
}

TEST_F(Losses, AreCountedWhileTheDiskIsFull)
{
    constexpr int rounds = 5, count = 100;
    start();
    limit_file(5000);
    for (int round = 0; round < rounds; ++round) {
        set_values(count, "while there is little room");
        const std::string before = text();
        EXPECT_LE(before.size(), 5000U);
        EXPECT_GT(before.size(), 4800U);
        EXPECT_TRUE(before.ends_with("}\n"));
    }
    limit_file(RLIM_INFINITY);
    set_values(1, "last");
    auto found = events();
    const int lost = take_lost(found);
    EXPECT_EQ(static_cast<int>(found.size()) + lost, rounds * count + 1);
    EXPECT_EQ(found.back()["value"], "last");
}

TEST_F(Losses, OfEntriesLargerThanTheRingAreCounted)
{
    start();
    set_values(1, std::string(2 << 20, 'x'));
    set_values(1, "last");
    auto found = events();
    set_values(1, "to see the count");
    found = events();
    EXPECT_EQ(take_lost(found), 1);
    EXPECT_EQ(found.size(), 2U);
}

// At whatever place it is: the others go on, and every line is whole.
TEST_F(Losses, DoNotOccurInOtherProcessesWhenOneIsKilled)
{
    constexpr int rounds = 100;
    start();
    for (int round = 0; round < rounds; ++round) {
        const pid_t child = fork();
        if (child == 0)
            for (;;)
                set_values(100, std::string(400, 'c'));
        usleep(1000);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        recording().add_setting("parent", std::to_string(round));
    }
    int next = 0;
    for (const Json &line : events()) {
        ASSERT_TRUE(line["value"] == std::string(400, 'c') || line["key"] == "parent") << line;
        if (line["key"] == "parent") {
            ASSERT_EQ(line["value"], std::to_string(next++));
        }
    }
    EXPECT_EQ(next, rounds);
}

} // namespace
