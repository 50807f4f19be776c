// The command table, and what is generated from it.
#include "cli/completion.h"
#include "cli/help.h"
#include "cli/manual.h"
#include "cmifctl/cli/command_line.h"
#include "cmifctl/cli/exit_meanings.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <sstream>

namespace
{

using namespace cmifctl;

TEST(Table, EveryCommandIsOnceInAKnownGroup)
{
    std::set<std::string> paths;
    for (const cli::Command &command : tables().commands) {
        const std::string path = command.path;
        EXPECT_TRUE(paths.insert(path).second) << path;
        const auto groups = tables().groups;
        const bool known =
            std::any_of(groups.begin(), groups.end(), [&path](const cli::Group &group) {
                return path.starts_with(std::string(group.name) + " ");
            });
        EXPECT_TRUE(known || path.find(' ') == std::string::npos) << path;
    }
}

TEST(Table, HelpAndManualDescribeEveryCommand)
{
    const std::string help = cli::help_text(tables(), "");
    for (const cli::Command &command : tables().commands) {
        const std::string path = command.path;
        EXPECT_NE(help.find("  " + path + " "), std::string::npos) << path;
        const std::string own = cli::help_text(tables(), path);
        EXPECT_NE(own.find(std::string(command.summary).substr(1)), std::string::npos) << path;
        for (const cli::Argument &argument : command.arguments)
            EXPECT_NE(own.find(argument.help), std::string::npos) << argument.name;
    }
}

TEST(Table, EveryExampleIsValid)
{
    for (const cli::Command &command : tables().commands) {
        std::istringstream text(std::string("cmifctl ") + command.path + " " + command.example);
        std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
        std::vector<const char *> pointers;
        for (const std::string &word : words)
            pointers.push_back(word.c_str());
        const CommandLine line = parse(static_cast<int>(pointers.size()), pointers.data());
        EXPECT_EQ(line.path, command.path);
        EXPECT_FALSE(line.context.arguments.has("yes")) << command.path; // a habit to avoid
    }
}

TEST(Table, CompletionKnowsEveryCommand)
{
    for (const cli::Command &command : tables().commands) {
        std::istringstream text(command.path);
        const std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
        const auto candidates = cli::complete(tables(), words);
        EXPECT_TRUE(std::any_of(
            candidates.begin(), candidates.end(),
            [&words](const cli::Candidate &next) { return next.value == words.back(); }))
            << command.path;
    }
}

TEST(Table, EveryCommandHasADefinitionInTheSchema)
{
    const Json schema = Json::parse(std::ifstream(CMIF_SCHEMA));
    std::set<std::string> defined;
    for (const auto &[name, definition] : schema["$defs"].items())
        if (name.starts_with("verb."))
            defined.insert(name);
    std::set<std::string> expected;
    for (const cli::Command &command : tables().commands) {
        std::string name = std::string("verb.") + command.path;
        std::replace(name.begin(), name.end(), ' ', '.');
        expected.insert(name);
        EXPECT_NE(schema["anyOf"].dump().find("#/$defs/" + name + "\""), std::string::npos) << name;
    }
    EXPECT_EQ(defined, expected);
}

// A word after a command is an argument of it.
TEST(Table, NoCommandIsAGroupOfOthers)
{
    for (const cli::Command &command : tables().commands)
        EXPECT_TRUE(cli::subcommands_of(tables(), command.path).empty()) << command.path;
}

TEST(Table, EveryExitStatusHasAMeaning)
{
    for (int status = 0; status <= static_cast<int>(Exit::not_ready); ++status)
        EXPECT_EQ(exit_meanings[status].name, std::to_string(status));
    EXPECT_EQ(std::size(exit_meanings), static_cast<std::size_t>(Exit::not_ready) + 1);
}

} // namespace
