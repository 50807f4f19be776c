// What may complete a command line.
#include "cli/completion.h"
#include "sample_table.h"

#include <gtest/gtest.h>

namespace
{

std::string completed(const std::vector<std::string> &words)
{
    std::string text;
    for (const cli::Candidate &candidate : cli::complete(sample, words))
        text += (text.empty() ? "" : " ") + candidate.value;
    return text;
}

TEST(Completion, KnowsCommands)
{
    EXPECT_EQ(completed({""}), "plant gate sing run");
    EXPECT_EQ(completed({"g"}), "gate");
    EXPECT_EQ(completed({"gate", ""}), "open unlock show");
    EXPECT_EQ(completed({"--colour", "red", "gate", "u"}), "unlock");
    EXPECT_EQ(completed({"gate", "open", ""}), "");
    EXPECT_EQ(completed({}), "");
}

TEST(Completion, KnowsOptionsThatAreStillPossible)
{
    EXPECT_EQ(completed({"-"}), "--colour --help --version --repeat");
    EXPECT_EQ(completed({"gate", "show", "--r"}), "--repeat");
    EXPECT_EQ(completed({"gate", "open", "--r"}), "");
    EXPECT_EQ(completed({"plant", "--r"}), "--repeat");
    EXPECT_EQ(completed({"plant", "rose", "--r"}), "");
    EXPECT_EQ(completed({"plant", "--d"}), "--depth --dry");
    EXPECT_EQ(completed({"plant", "--dry", "--d"}), "--depth");
    EXPECT_EQ(completed({"plant", "--beside", "x", "--b"}), "--beside");
}

TEST(Completion, KnowsValues)
{
    EXPECT_EQ(completed({"--colour", ""}), "red blue");
    EXPECT_EQ(completed({"-c", "b"}), "blue");
    EXPECT_EQ(completed({"--colour=r"}), "--colour=red");
    EXPECT_EQ(completed({"plant", "rose", "b"}), "blue");
    EXPECT_EQ(completed({"plant", "--depth", ""}), "");
    EXPECT_EQ(completed({"gate", "unlock", ""}), "-");
    EXPECT_EQ(completed({"plant", "--dry="}), "");
    EXPECT_EQ(completed({"--unknown="}), "");
}

TEST(Completion, KnowsWhatFollowsTheWordsBefore)
{
    EXPECT_EQ(completed({"sing", ""}), "la");
    EXPECT_EQ(completed({"sing", "do", "re", ""}), "do-re-la");
    EXPECT_EQ(completed({"sing", "do", "x"}), "");
    EXPECT_EQ(completed({"run", "--", "rake", ""}), "");
}

TEST(Completion, AsksForValuesThatOnlyTheSystemKnows)
{
    EXPECT_EQ(completed({"plant", ""}), "rose rosemary"); // a shell would split the third
    EXPECT_EQ(completed({"plant", "rose", "--beside=rosem"}), "--beside=rosemary");
}

TEST(Completion, LeavesTheRestAndWrongLinesAlone)
{
    EXPECT_EQ(completed({"run", "--", ""}), "");
    EXPECT_EQ(completed({"run", "--", "--"}), "");
    EXPECT_EQ(completed({"unknown", ""}), "");
    EXPECT_EQ(completed({"--dry", "plant", ""}), "");
    EXPECT_EQ(completed({"plant", "--", "--"}), "");
}

TEST(Completion, WritesOneLineForEachCandidate)
{
    EXPECT_EQ(cli::candidates_text(cli::complete(sample, {"plant", ""})),
              "rose\tred;   thorns\nrosemary\t\n");
}

} // namespace
