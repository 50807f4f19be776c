// The command line of cmif-sim: its options, help and usage errors.
#include "shell.h"

namespace
{

struct Misuse {
    const char *line, *error;
};

constexpr Misuse misuses[] = {
    {"$S", "A subcommand is required\n"},
    {"$S nothing", "A subcommand is required\n"},
    {"$S run cmifctl", "The following argument was not expected: cmifctl\n"},
    {"$S run --bogus", "The following argument was not expected: --bogus\n"},
    {"$S serve -- true", "The following argument was not expected: true\n"},
    {"$S run --no-at --no-qmi", "--no-at excludes --no-qmi\n"},
    {"$S run --seed x", "Could not convert: --seed = x\n"},
    {"$S run --seed -1", "Could not convert: --seed = -1\n"},
    {"$S run --pace soon", "--pace: 'soon' is not a number from 0 to 1000\n"},
    {"$S run --pace ''", "--pace: '' is not a number from 0 to 1000\n"},
    {"$S run --pace -1", "--pace: '-1' is not a number from 0 to 1000\n"},
    {"$S run --pace -0.001", "--pace: '-0.001' is not a number from 0 to 1000\n"},
    {"$S run --pace 1000.001", "--pace: '1000.001' is not a number from 0 to 1000\n"},
    {"$S run --pace 1e10", "--pace: '1e10' is not a number from 0 to 1000\n"},
    {"$S run --pace 1e999", "--pace: '1e999' is not a number from 0 to 1000\n"},
    {"$S run --pace inf", "--pace: 'inf' is not a number from 0 to 1000\n"},
    {"$S run --pace nan", "--pace: 'nan' is not a number from 0 to 1000\n"},
    {"$S run --pace 0.1x", "--pace: '0.1x' is not a number from 0 to 1000\n"},
    {"$S serve --pace 1001", "--pace: '1001' is not a number from 0 to 1000\n"},
};

TEST(Options, AreRefusedWithStatus2AndAReason)
{
    for (const Misuse &misuse : misuses) {
        const Outcome refused = shell(misuse.line);
        EXPECT_EQ(refused.status, 2) << misuse.line;
        EXPECT_EQ(refused.output, "") << misuse.line;
        EXPECT_EQ(refused.errors,
                  std::string(misuse.error) + "Run with --help for more information.\n")
            << misuse.line;
    }
}

TEST(Options, AcceptEveryPaceInRange)
{
    for (const char *pace : {"0", "0.1", "1e-3", "1000"})
        EXPECT_EQ(shell(std::string("$S run --pace ") + pace + " -- true").status, 0) << pace;
}

TEST(Options, HaveAHelp)
{
    const Outcome help = shell("$S --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.errors, "");
    EXPECT_TRUE(contains(help.output, "  cmif-sim run -- cmifctl status ")) << help.output;
    EXPECT_TRUE(contains(help.output, "Serve this system's queues until stopped\n")) << help.output;
    EXPECT_EQ(shell("$S --version").output.rfind("cmif-sim 1.", 0), 0U);
}

TEST(Options, HaveAHelpForEachSubcommand)
{
    const Outcome run = shell("$S run --help");
    EXPECT_EQ(run.status, 0);
    for (const char *part :
         {"Usage: cmif-sim run [OPTIONS] [-- PROGRAM [ARGUMENT...]]\n", "--pace FACTOR=1 ",
          "Factor on the modem's delays, 0 to 1000: ", "--seed N=1 ", "--verbose ",
          "Exit status: the program's; 1 the router did not start, 2 usage error, 126 "})
        EXPECT_TRUE(contains(run.output, part)) << part << run.output;
    const Outcome serve = shell("$S serve --help");
    EXPECT_EQ(serve.status, 0);
    EXPECT_TRUE(contains(serve.output, "Stops on SIGTERM and SIGINT. ")) << serve.output;
}

} // namespace
