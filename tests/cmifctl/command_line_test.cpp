// What cmifctl understands, what is made from the table of commands, what a result code means.
#include "client/result.h"
#include "cmifctl/cli/command_line.h"
#include "cmifctl/cli/help.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace
{

using namespace cmifctl;

CommandLine parsed(std::vector<const char *> words)
{
    words.insert(words.begin(), "cmifctl");
    return parse(static_cast<int>(words.size()), words.data());
}

std::string usage_failure(const std::vector<const char *> &words)
{
    try {
        parsed(words);
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.status(), Exit::usage);
        return std::string(failure.what()) + " | " + failure.hint();
    }
    return "understood";
}

TEST(CommandLine, TakesOptionsAnywhere)
{
    const CommandLine line =
        parsed({"--json", "data", "profile", "set", "--timeout", "2.5", "--apn", "x", "--trace"});
    ASSERT_NE(line.command, nullptr);
    EXPECT_STREQ(line.command->path, "data profile set");
    EXPECT_TRUE(line.run.options.json);
    EXPECT_TRUE(line.run.options.trace);
    EXPECT_EQ(line.run.options.timeout, 2.5);
    EXPECT_EQ(line.run.arguments.text("apn"), "x");
    EXPECT_FALSE(line.run.arguments.has("user"));
}

TEST(CommandLine, TakesADashAsAnArgument)
{
    const CommandLine line = parsed({"sim", "pin-mode", "on", "-", "--force"});
    EXPECT_EQ(line.run.arguments.code("mode", names::on_off), 1);
    EXPECT_EQ(line.run.arguments.text("source"), "-");
    EXPECT_TRUE(line.run.arguments.has("force"));
}

TEST(CommandLine, NamesNearMatchesAndVerbs)
{
    EXPECT_EQ(usage_failure({"sim", "entr-pin"}),
              "'entr-pin' is no verb of 'cmifctl sim' | Did you mean: enter-pin?");
    EXPECT_EQ(usage_failure({"network", "frobnicate"}),
              "'frobnicate' is no verb of 'cmifctl network' | There are: show, scan, scan-state, "
              "list, select, auto, format.");
    EXPECT_EQ(usage_failure({"sms"}),
              "'cmifctl sms' needs a verb | There are: list, show, delete.");
    EXPECT_EQ(usage_failure({"status", "--jsn"}),
              "'--jsn' is no option of 'cmifctl status' | 'cmifctl status --help' lists them.");
}

TEST(CommandLine, SaysWhatAnOptionIsMissing)
{
    EXPECT_EQ(usage_failure({"status", "--timeout"}),
              "--timeout needs a value | 'cmifctl --help' lists the commands.");
    EXPECT_EQ(usage_failure({"status", "--timeout", "1", "--timeout", "2"}),
              "--timeout is given more than once | 'cmifctl --help' lists the commands.");
}

TEST(CommandLine, TakesNoSecretsAsArguments)
{
    const std::string expected = "secrets are not taken from the command line | Leave it out to be "
                                 "asked, or give - to read standard input.";
    EXPECT_EQ(usage_failure({"sim", "enter-pin", "1234"}),
              "'cmifctl sim enter-pin' does not take all that is given: " + expected);
    EXPECT_EQ(usage_failure({"sim", "change-pin", "1234", "4321"}),
              "'cmifctl sim change-pin' does not take all that is given: " + expected);
    EXPECT_EQ(usage_failure({"config", "set", "key", "value", "more"}),
              "'cmifctl config set' does not take all that is given | 'cmifctl config set --help' "
              "shows what it takes.");
    EXPECT_EQ(usage_failure({"data", "profile", "set", "--password=hunter2"}),
              "secrets are not taken from the command line | Give --password ask to be asked, or "
              "--password - to read standard input.");
}

TEST(CommandLine, RefusesValuesThatAreNone)
{
    EXPECT_EQ(usage_failure({"--json=true", "status"}),
              "--json takes no value | Give --json alone.");
    EXPECT_EQ(usage_failure({"--timeout=", "status"}),
              "--timeout= has no value | Give the value as the next word; '' is an empty one.");
    EXPECT_NE(usage_failure({"--timeout", "", "status"}), "understood");
    EXPECT_EQ(parsed({"data", "profile", "set", "--user", ""}).run.arguments.given("user"), "");
}

TEST(CommandLine, ChecksArguments)
{
    EXPECT_EQ(usage_failure({"sms", "show"}),
              "'cmifctl sms show' needs ID | ID: its index, as the list shows it.");
    EXPECT_EQ(usage_failure({"radio", "mode", "5g"}),
              "'5g' is no MODE of 'cmifctl radio mode' | One of: auto, 2g, 3g, 4g.");
    EXPECT_EQ(
        usage_failure({"status", "--timeout", "-1"}),
        "--timeout takes a number of seconds, not '-1' | From 0 to 1000000; 0 waits for ever.");
    EXPECT_NE(usage_failure({"status", "--timeout"}), "understood");
}

TEST(CommandLine, HelpNeedsNoArguments)
{
    EXPECT_TRUE(parsed({"sms", "show", "--help"}).help);
    EXPECT_EQ(parsed({"sms", "show", "-h"}).path, "sms show");
    EXPECT_TRUE(parsed({"--version"}).version);
}

TEST(CommandLine, SeesJsonHoweverWrongTheRest)
{
    const char *words[]{"cmifctl", "frob", "--json"};
    EXPECT_TRUE(wants_json(3, words));
    EXPECT_FALSE(wants_json(2, words));
    words[1] = "--json=true";
    EXPECT_TRUE(wants_json(2, words));
}

// ---- the table and what is made from it ----

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

// ---- results ----

Exit status_of(void (*check)(const char *, int), int result)
{
    try {
        check("call", result);
    } catch (const Failure &failure) {
        return failure.status();
    }
    return Exit::done;
}

TEST(Result, AtCodesHaveTheirExitStatus)
{
    EXPECT_EQ(status_of(check_at, 0), Exit::done);
    EXPECT_EQ(status_of(check_at, 2), Exit::not_ready);
    EXPECT_EQ(status_of(check_at, -1), Exit::not_ready);
    EXPECT_EQ(status_of(check_at, 3), Exit::other);
    for (const int daemon_code : {1, 4, 5, 7, 16, 999, -2})
        EXPECT_EQ(status_of(check_at, daemon_code), Exit::refused) << daemon_code;
}

TEST(Result, QmiCodesHaveTheirExitStatus)
{
    const Exit expected[]{Exit::done,  Exit::not_ready, Exit::not_ready, Exit::other,
                          Exit::other, Exit::invalid,   Exit::no_file,   Exit::profile_busy};
    for (int result = 0; result < 8; ++result)
        EXPECT_EQ(status_of(check_qmi, result), expected[result]) << result;
}

TEST(Result, ARefusalNamesTheCode)
{
    try {
        check_at("call", 16);
        FAIL();
    } catch (const Failure &failure) {
        EXPECT_STREQ(failure.what(), "call: the AT daemon refused: incorrect password (16)");
        EXPECT_EQ(failure.details(),
                  Json::parse(R"({"daemon": {"code": 16, "name": "incorrect password"}})"));
    }
    EXPECT_EQ(refusal_text(777), "code 777");
}

TEST(Result, KnowsEveryCodeOfTheSimulatedDaemon)
{
    for (const int code : {11, 12, 13, 16, 21, 30, 32, 40, 50, 127, 203, 204, 220, 221})
        EXPECT_NE(refusal(code), nullptr) << code;
    EXPECT_EQ(refusal(0), nullptr);
}

} // namespace
