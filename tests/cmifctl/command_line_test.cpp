// Which command lines cmifctl accepts, and what it reports about the others.
#include "cli/usage_error.h"
#include "cmifctl/cli/command_line.h"

#include <gtest/gtest.h>

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
    } catch (const cli::UsageError &error) {
        return std::string(error.what()) + " | " + error.hint();
    }
    return "accepted";
}

TEST(CommandLine, TakesOptionsAnywhere)
{
    const CommandLine line =
        parsed({"--json", "data", "profile", "set", "--timeout", "2.5", "--apn", "x", "--trace"});
    ASSERT_NE(line.command, nullptr);
    EXPECT_STREQ(line.command->path, "data profile set");
    EXPECT_TRUE(line.context.output.json());
    EXPECT_TRUE(line.context.options.trace);
    EXPECT_EQ(line.context.options.timeout, 2.5);
    EXPECT_EQ(line.context.arguments.text("apn"), "x");
    EXPECT_FALSE(line.context.arguments.has("user"));
    EXPECT_FALSE(parsed({"status"}).context.options.trace);
}

TEST(CommandLine, TakesADashAsAnArgument)
{
    const CommandLine line = parsed({"sim", "pin-mode", "on", "-", "--force"});
    EXPECT_EQ(line.context.arguments.code("mode", enums::on_off), 1);
    EXPECT_EQ(line.context.arguments.text("source"), "-");
    EXPECT_TRUE(line.context.arguments.has("force"));
}

TEST(CommandLine, TakesValuesAfterAnEqualsSign)
{
    const CommandLine line = parsed({"data", "profile", "set", "--apn=a=b", "--user=--x"});
    EXPECT_EQ(line.context.arguments.text("apn"), "a=b");
    EXPECT_EQ(line.context.arguments.text("user"), "--x");
    EXPECT_EQ(parsed({"data", "profile", "set", "--user", ""}).context.arguments.given("user"), "");
}

TEST(CommandLine, TakesOnlyArgumentsAfterTwoDashes)
{
    const CommandLine line = parsed({"config", "set", "--show-secrets", "--", "--key", "--"});
    EXPECT_TRUE(line.context.arguments.has("show-secrets"));
    EXPECT_EQ(line.context.arguments.text("key"), "--key");
    EXPECT_EQ(line.context.arguments.text("value"), "--");
    EXPECT_EQ(parsed({"--", "sms", "show", "1"}).path, "sms show");
}

struct UsageCase {
    std::vector<const char *> words;
    const char *failure;
};

void expect_failures(const std::vector<UsageCase> &cases)
{
    for (const UsageCase &row : cases)
        EXPECT_EQ(usage_failure(row.words), row.failure);
}

// clang-format off

TEST(CommandLine, NamesSimilarAndKnownCommands)
{
    expect_failures({
        {{"sim", "entr-pin"},         "unknown command 'entr-pin' in 'cmifctl sim' | Did you mean: enter-pin?"},
        {{"network", "frobnicate"},   "unknown command 'frobnicate' in 'cmifctl network' | "
                                      "Available: show, scan, scan-state, list, select, auto, format."},
        {{"sms"},                     "missing command after 'cmifctl sms' | Available: list, show, delete."},
        {{"data", "profile"},         "missing command after 'cmifctl data profile' | Available: show, set."},
        {{"status", "--jsn"},         "unknown option '--jsn' for 'cmifctl status' | Did you mean: --json?"},
        {{"status", "--time", "3"},   "unknown option '--time' for 'cmifctl status' | Did you mean: --timeout?"},
        {{"foo", "bar"},              "unknown command 'foo' in 'cmifctl' | "
                                      "Available: status, summary, doctor, sim, radio, network, sms, data, log, config, completion, manual, complete."},
        {{"enter-pin"},               "unknown command 'enter-pin' in 'cmifctl' | Did you mean: sim enter-pin?"},
        {{"--force", "sim"},          "unknown option '--force' for 'cmifctl' | 'cmifctl --help' lists the options."},
        {{"status", "-x"},            "unknown option '-x' for 'cmifctl status' | 'cmifctl status --help' lists the options."},
    });
}

TEST(CommandLine, ReportsMissingAndUnexpectedValues)
{
    expect_failures({
        {{"status", "--timeout"},     "--timeout needs a value | 'cmifctl status --help' shows its usage."},
        {{"status", "--timeout", "1", "--timeout", "2"},
                                      "--timeout is given more than once | 'cmifctl status --help' shows its usage."},
        {{"--timeout", "--json", "status"},
                                      "--timeout needs a value, not another option | Write --timeout=VALUE for a value that begins with --."},
        {{"--timeout=", "status"},    "--timeout= has no value | Give the value as the next word; '' is an empty one."},
        {{"--timeout", "", "status"}, "invalid --timeout '' | A number of seconds from 0 to 1000000; 0 = no limit."},
        {{"status", "--timeout", "-1"},
                                      "invalid --timeout '-1' | A number of seconds from 0 to 1000000; 0 = no limit."},
        {{"--json=true", "status"},   "--json takes no value | Give --json alone."},
        {{"-o", "xml", "status"},     "invalid FORMAT 'xml' for --output | One of: human, json, keyvalue."},
        {{"--json", "-o", "human", "status"},
                                      "--json and --output human exclude each other | Give one of them."},
        {{"--json", "--field", "a", "status"},
                                      "--field and --json exclude each other | Give one of them."},
        {{"status", "--watch=0"},     "invalid --watch '0' | A number of seconds from 0.1 to 1000000."},
    });
}

TEST(CommandLine, ChecksArguments)
{
    expect_failures({
        {{"sms", "show"},             "missing ID for 'cmifctl sms show' | ID: its index in the list."},
        {{"radio", "functionality"},  "missing LEVEL for 'cmifctl radio functionality' | One of: minimum, full, radio_off."},
        {{"radio", "mode", "5g"},     "invalid MODE '5g' for 'cmifctl radio mode' | One of: auto, gsm, utran, eutran."},
        {{"status", "more"},          "unexpected argument 'more' for 'cmifctl status' | 'cmifctl status --help' shows its usage."},
    });
}

TEST(CommandLine, TakesNoSecretsAsArguments)
{
    const std::string not_taken = ": secrets are not taken from the command line | "
                                  "Leave it out to be asked, or give - to read standard input.";
    const std::string enter = "too many arguments for 'cmifctl sim enter-pin'" + not_taken;
    const std::string option = "unknown option for 'cmifctl sim enter-pin'" + not_taken;
    const std::string change = "too many arguments for 'cmifctl sim change-pin'" + not_taken;
    EXPECT_TRUE(usage_failure({"1234", "sim"}).starts_with("unknown command in 'cmifctl' | Available: "));
    const std::string mode = "too many arguments for 'cmifctl sim pin-mode'" + not_taken;
    expect_failures({
        {{"sim", "enter-pin", "1234"},              enter.c_str()},
        {{"sim", "enter-pin", "--1234"},            option.c_str()},
        {{"sim", "change-pin", "1234", "4321"},     change.c_str()},
        {{"sim", "pin-mode", "on", "1234"},         mode.c_str()},
        {{"sim", "pin-mode", "1234"},               "invalid MODE for 'cmifctl sim pin-mode' | One of: off, on."},
        {{"config", "set", "key", "value", "more"}, "too many arguments for 'cmifctl config set' | "
                                                    "'cmifctl config set --help' shows its usage."},
        {{"--1234", "sim", "enter-pin"},            "unknown option for 'cmifctl' | 'cmifctl --help' lists the options."},
        {{"--passwd=hunter", "data"},               "unknown option '--passwd' for 'cmifctl' | 'cmifctl --help' lists the options."},
        {{"sim", "--1234", "enter-pin"},            "unknown option for 'cmifctl sim' | 'cmifctl sim --help' lists the options."},
        {{"sim", "enter-pin", "--frce"},            "unknown option for 'cmifctl sim enter-pin' | Did you mean: --force?"},
        {{"status", "1234"},                        "too many arguments for 'cmifctl status' | 'cmifctl status --help' shows its usage."},
        {{"data", "profile", "set", "--password=hunter2"},
                                                    "secrets are not taken from the command line | "
                                                    "Give --password ask to be asked, or --password - to read standard input."},
    });
}

// clang-format on

TEST(CommandLine, HelpNeedsNoArguments)
{
    EXPECT_TRUE(parsed({"sms", "show", "--help"}).help);
    EXPECT_EQ(parsed({"sms", "show", "-h"}).path, "sms show");
    EXPECT_EQ(parsed({"sms", "--help", "show"}).path, "sms show");
    EXPECT_TRUE(parsed({"--help"}).help);
    EXPECT_FALSE(parsed({"config", "get", "--", "--help"}).help);
    EXPECT_EQ(parsed({"sms", "show", "--all", "-h"}).path, "sms show");
    EXPECT_TRUE(parsed({"sms", "show", "--timeout", "--help"}).help);
    EXPECT_TRUE(parsed({"frobnicate", "--help"}).help);
    for (const char *wrong : {"--timeout=abc", "--watch=0", "--output=xml"})
        EXPECT_TRUE(parsed({wrong, "status", "--help"}).help) << wrong;
    EXPECT_EQ(parsed({"--json", "-o", "keyvalue", "--help"}).context.output.format, Format::json);
    EXPECT_EQ(usage_failure({"frobnicate", "--", "--help"}).find("unknown command"), 0U);
    for (const char *version : {"--version", "-V"}) {
        EXPECT_EQ(parsed({version}).command, nullptr);
        EXPECT_FALSE(parsed({version}).help);
    }
}

TEST(CommandLine, SeesJsonHoweverWrongTheRest)
{
    const char *words[]{"cmifctl", "frob", "--json"};
    EXPECT_TRUE(wants_json(3, words));
    EXPECT_FALSE(wants_json(2, words));
    words[1] = "--json=true";
    EXPECT_TRUE(wants_json(2, words));
    words[1] = "--";
    EXPECT_FALSE(wants_json(3, words));
    words[1] = "-o";
    words[2] = "json";
    EXPECT_TRUE(wants_json(3, words));
    words[2] = "1"; // its number in the table
    EXPECT_TRUE(wants_json(3, words));
    words[2] = "human";
    EXPECT_FALSE(wants_json(3, words));
    words[1] = "--output=json";
    EXPECT_TRUE(wants_json(2, words));
}

TEST(CommandLine, TakesTheFormatOfTheOutput)
{
    EXPECT_EQ(parsed({"status"}).context.output.format, Format::human);
    EXPECT_EQ(parsed({"status", "-o", "keyvalue"}).context.output.format, Format::keyvalue);
    EXPECT_EQ(parsed({"--json", "--output=json", "status"}).context.output.format, Format::json);
    EXPECT_EQ(parsed({"status", "--field", "a.b", "--field=c"}).context.output.fields,
              (std::vector<std::string>{"a.b", "c"}));
    EXPECT_EQ(parsed({"status", "--color", "never"}).context.output.colour, Colour::never);
    EXPECT_EQ(parsed({"status", "--watch"}).context.output.watch, 2.0);
    EXPECT_EQ(parsed({"status", "--watch=0.5"}).context.output.watch, 0.5);
    EXPECT_FALSE(parsed({"status"}).context.output.watch);
}

TEST(CommandLine, RepeatsOnlyReadings)
{
    EXPECT_TRUE(parsed({"radio", "mode", "--watch"}).context.output.watch);
    EXPECT_TRUE(parsed({"doctor", "--watch"}).context.output.watch);
    EXPECT_EQ(usage_failure({"doctor", "--fix", "--watch"}).find("--watch is for"), 0U);
    const std::string only = "--watch is for commands that only read, not for 'cmifctl ";
    EXPECT_EQ(usage_failure({"radio", "mode", "auto", "--watch"}),
              only + "radio mode' | Leave --watch out.");
    EXPECT_EQ(usage_failure({"sim", "enter-pin", "--watch"}),
              only + "sim enter-pin' | Leave --watch out.");
    EXPECT_EQ(usage_failure({"data", "start", "--field", "data.state"}),
              "--field is for commands that only read, not for 'cmifctl data start' | "
              "Leave --field out.");
}

TEST(CommandLine, TakesTheTimeLimitFromTheEnvironmentToo)
{
    setenv("CMIF_TIMEOUT", "7.5", 1);
    EXPECT_EQ(parsed({"status"}).context.options.timeout, 7.5);
    EXPECT_EQ(parsed({"status", "--timeout", "1"}).context.options.timeout, 1);
    setenv("CMIF_TIMEOUT", "soon", 1);
    EXPECT_EQ(usage_failure({"status"}),
              "invalid CMIF_TIMEOUT 'soon' | A number of seconds from 0 to "
              "1000000; 0 = no limit.");
    EXPECT_TRUE(parsed({"--help"}).help);
    EXPECT_EQ(usage_failure({"manual"}), "accepted");
    EXPECT_EQ(usage_failure({"completion", "bash"}), "accepted");
    EXPECT_EQ(usage_failure({"complete", "--", "status"}), "accepted");
    setenv("CMIF_TIMEOUT", "", 1);
    EXPECT_FALSE(parsed({"status"}).context.options.timeout);
    unsetenv("CMIF_TIMEOUT");
}

} // namespace
