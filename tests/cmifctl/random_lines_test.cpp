// Command lines put together at random: each is accepted or refused, with the reason.
#include "cli/usage_error.h"
#include "cmifctl/cli/command_line.h"

#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace cmifctl;

// The words of the table, and some that aren't in it.
std::vector<std::string> alphabet()
{
    std::set<std::string> words{"-",   "--", "",         "1",    "-1",       "=",
                                "--=", "x",  "\x1b[31m", "\xff", "--no-such"};
    for (const cli::Command &command : tables().commands) {
        std::istringstream path(command.path);
        for (std::string word; path >> word;)
            words.insert(word);
        for (const cli::ArgumentRows rows :
             {command.arguments, tables().options, tables().reading_options})
            for (const cli::Argument &argument : rows) {
                words.insert(std::string("--") + argument.name);
                words.insert(std::string("--") + argument.name + "=1");
                for (const cli::Choice &choice : argument.choices)
                    words.insert(choice.name);
            }
    }
    return {words.begin(), words.end()};
}

// A command of the table with some words after it, or words alone.
std::vector<const char *> random_line(std::mt19937 &random, const std::vector<std::string> &words,
                                      std::vector<std::string> &path)
{
    const auto commands = tables().commands;
    std::istringstream text(random() % 4 == 0 ? "" : commands[random() % commands.size()].path);
    path.assign(std::istream_iterator<std::string>(text), {});
    std::vector<const char *> line{"cmifctl"};
    for (const std::string &word : path)
        line.push_back(word.c_str());
    for (auto more = random() % 5; more > 0; --more)
        line.insert(line.begin() + 1 + static_cast<std::ptrdiff_t>(random() % line.size()),
                    words[random() % words.size()].c_str());
    return line;
}

TEST(RandomLines, AreAcceptedOrRefused)
{
    const std::vector<std::string> words = alphabet();
    std::mt19937 random(8);
    std::vector<std::string> path;
    int accepted = 0;
    constexpr int rounds = 5'000;
    for (int round = 0; round < rounds; ++round) {
        std::vector<const char *> line = random_line(random, words, path);
        line.insert(line.begin() + 1, "--json");
        const int count = static_cast<int>(line.size());
        EXPECT_TRUE(wants_json(count, line.data()));
        try {
            const CommandLine parsed = parse(count, line.data());
            EXPECT_TRUE(parsed.context.output.json());
            ++accepted;
        } catch (const cli::UsageError &error) {
            EXPECT_STRNE(error.what(), "");
        }
    }
    EXPECT_GT(accepted, rounds / 20); // both kinds are among them
    EXPECT_LT(accepted, rounds / 2);
}

} // namespace
