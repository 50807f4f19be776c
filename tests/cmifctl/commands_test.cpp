// The command table, and what is generated from it.
#include "cmifctl/cli/commands.h"
#include "cmifctl/cli/help.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace
{

using namespace cmifctl;

TEST(Table, EveryCommandIsInAGroupAndOnce)
{
    std::set<std::string> paths;
    for (const Command &command : commands()) {
        EXPECT_TRUE(paths.insert(command.path).second) << command.path;
        const std::string path = command.path;
        const std::string group = path.substr(0, path.find(' '));
        EXPECT_TRUE(std::any_of(groups().begin(), groups().end(), [&group](const Group &known) {
            return group == known.name;
        })) << group;
        EXPECT_NE(command.run, nullptr);
    }
}

TEST(Table, HelpCompletionAndManualNameEveryCommand)
{
    const std::string help = help_text("");
    const std::string bash = completion_script("bash");
    const std::string zsh = completion_script("zsh");
    const std::string page = manual_page();
    for (const Command &command : commands()) {
        const std::string path = command.path;
        EXPECT_NE(help.find("  " + path + " "), std::string::npos) << path;
        EXPECT_NE(bash.find("'" + path + "')"), std::string::npos) << path;
        EXPECT_NE(zsh.find("'" + path + "')"), std::string::npos) << path;
        EXPECT_NE(help_text(path).find(command.summary), std::string::npos) << path;

        for (const Argument &argument : command.arguments)
            EXPECT_NE(help_text(path).find(argument.help), std::string::npos) << argument.name;
    }
}

// A word after a command is an argument of it.
TEST(Table, NoCommandIsAGroupOfOthers)
{
    for (const Command &command : commands())
        EXPECT_TRUE(subcommands_of(command.path).empty()) << command.path;
}

} // namespace
