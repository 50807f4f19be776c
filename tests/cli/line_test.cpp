// Which command lines are accepted, and what becomes of their words.
#include "cli/line.h"
#include "cli/usage_error.h"
#include "sample_table.h"

#include <gtest/gtest.h>
#include <random>

namespace
{

using Words = std::vector<const char *>;

cli::Line parsed(const Words &words)
{
    return cli::parse(sample, words);
}

std::string failure(const Words &words)
{
    try {
        parsed(words);
    } catch (const cli::UsageError &error) {
        return std::string(error.what()) + " | " + error.hint();
    }
    return "accepted";
}

TEST(Line, TakesArgumentsInAnyOrder)
{
    const cli::Line line = parsed({"-c", "red", "plant", "--dry", "rose", "--depth=3", "blue"});
    EXPECT_STREQ(line.command->path, "plant");
    EXPECT_EQ(line.full_path(), "garden plant");
    EXPECT_EQ(line.arguments.text("plant"), "rose");
    EXPECT_EQ(line.arguments.text("colour"), "blue");
    EXPECT_EQ(line.arguments.number("depth", "--depth", 1, 5), 3);
    EXPECT_TRUE(line.arguments.has("dry"));
    EXPECT_EQ(line.options.text("colour"), "red");
}

TEST(Line, GivesRepeatedOptionsInTheirOrder)
{
    const cli::Line line = parsed({"plant", "rose", "--beside", "a", "--beside=b"});
    EXPECT_EQ(line.arguments.all("beside"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(line.arguments.given("beside"), "b");
    EXPECT_TRUE(line.arguments.all("depth").empty());
}

TEST(Line, TakesTheValueOfAFlagAfterAnEqualsSignOnly)
{
    EXPECT_EQ(parsed({"gate", "show", "--repeat=4"}).options.given("repeat"), "4");
    EXPECT_EQ(parsed({"--repeat", "gate", "show"}).options.given("repeat"), "");
    EXPECT_EQ(failure({"gate", "show", "--repeat="}),
              "--repeat= has no value | Leave the = out, or give a value.");
}

TEST(Line, LeavesTheRestToTheProgram)
{
    const cli::Line line = parsed({"run", "--quiet", "--", "rake", "--help", "--", "-x"});
    EXPECT_FALSE(line.help());
    EXPECT_EQ(line.arguments.all("words"),
              (std::vector<std::string>{"rake", "--help", "--", "-x"}));
    EXPECT_TRUE(parsed({"run", "--"}).arguments.all("words").empty());
    EXPECT_EQ(failure({"run", "rake"}),
              "unexpected argument 'rake' for 'garden run' | 'garden run --help' shows its usage.");
    EXPECT_EQ(failure({"--", "run", "--", "rake"}),
              "unexpected argument '--' for 'garden run' | 'garden run --help' shows its usage.");
}

TEST(Line, LeavesAllWordsFromARepeatedArgumentOnToTheProgram)
{
    using enum cli::Argument::Kind;
    static constexpr cli::Argument arguments[] = {
        {flag, "loud", "", "as a shout"},
        {optional, "text", "WORD...", "what to say", {}, {.repeats = true}},
    };
    static constexpr cli::Command commands[] = {
        {"say", "speak", cli::Access::acts, "", arguments},
    };
    cli::Program speaker = sample;
    speaker.commands = commands;
    const Words words{"say", "--loud", "minus", "-1", "--help", "--", "a"};
    const cli::Line line = cli::parse(speaker, words);
    EXPECT_FALSE(line.help());
    EXPECT_TRUE(line.arguments.has("loud"));
    EXPECT_EQ(line.arguments.all("text"),
              (std::vector<std::string>{"minus", "-1", "--help", "--", "a"}));
    EXPECT_TRUE(cli::parse(speaker, Words{"say"}).arguments.all("text").empty());
}

TEST(Line, RefusesOptionsAsValues)
{
    for (const char *value : {"--dry", "--", "--unknown"})
        EXPECT_EQ(failure({"plant", "--depth", value}),
                  "--depth needs a value, not another option | "
                  "Write --depth=VALUE for a value that begins with --.");
    EXPECT_EQ(parsed({"plant", "--depth=--dry", "rose"}).arguments.text("depth"), "--dry");
    EXPECT_EQ(parsed({"plant", "--depth", "-3", "rose"}).arguments.text("depth"), "-3");
}

TEST(Line, KnowsNoAbbreviations)
{
    EXPECT_EQ(failure({"plant", "--dept", "3"}),
              "unknown option '--dept' for 'garden plant' | Did you mean: --depth?");
    EXPECT_EQ(failure({"pla"}), "unknown command 'pla' in 'garden' | Did you mean: plant?");
    EXPECT_EQ(failure({"-cred", "plant"}),
              "unknown option '-cred' for 'garden' | 'garden --help' lists the options.");
}

TEST(Line, ChecksTheProgramsOptionsToo)
{
    EXPECT_EQ(failure({"gate", "open", "--colour", "pink"}),
              "invalid WHEN 'pink' for --colour | One of: red, blue.");
    EXPECT_EQ(failure({"gate", "unlock", "--colour", "hunter"}),
              "invalid WHEN for --colour | One of: red, blue.");
}

TEST(Line, NumbersAreWholeAndInRange)
{
    for (const char *text : {"0", "6", "x", "3.5", "", "99999999999999999999"}) {
        const cli::Line line = parsed({"plant", "rose", "--depth", text});
        EXPECT_THROW(line.arguments.number("depth", "--depth", 1, 5), cli::UsageError) << text;
    }
}

// Digits may be a code that was typed in the wrong place.
TEST(Line, RepeatsNoDigits)
{
    for (const Words &words :
         {Words{"--1234", "gate", "unlock"}, Words{"-1234"}, Words{"1234"}, Words{"gate", "1234"},
          Words{"gate", "--1234"}, Words{"gate", "unlock", "1234"}, Words{"gate", "open", "1234"},
          Words{"gate", "unlock", "--1234"}, Words{"--code=1234"},
          Words{"gate", "open", "--x=1234"}, Words{"gate", "unlock", "-", "1234"},
          Words{"gate", "unlock", "--help=1234"}, Words{"gate", "unlock", "--colour", "1234"},
          Words{"plant", "rose", "red", "1234"}})
        EXPECT_EQ(failure(words).find("1234"), std::string::npos) << failure(words);
}

TEST(Line, RepeatsNoWordOfACommandThatTakesSecrets)
{
    for (const Words &words :
         {Words{"gate", "unlock", "hunter"}, Words{"gate", "unlock", "--hunter"}})
        EXPECT_EQ(failure(words).find("hunter"), std::string::npos) << failure(words);
}

TEST(Line, EndsForEveryLine)
{
    const Words alphabet{"plant",    "gate",        "open",      "unlock", "show",   "run",
                         "rose",     "red",         "-",         "--",     "--dry",  "--depth",
                         "--depth=", "3",           "-c",        "-c=",    "--help", "-V",
                         "--colour", "--repeat=",   "=",         "",       "-h",     "--beside",
                         "--xyz",    "\x1b[2J\xff", "--version", "--=",    "-=",     "-c=red"};
    std::mt19937 random(20);
    int accepted = 0;
    for (int round = 0; round < 20'000; ++round) {
        Words words(random() % 7);
        for (const char *&word : words)
            word = alphabet[random() % alphabet.size()];
        accepted += failure(words) == "accepted" ? 1 : 0;
    }
    EXPECT_GT(accepted, 200); // both kinds are among them
    EXPECT_LT(accepted, 19'800);
}

} // namespace
