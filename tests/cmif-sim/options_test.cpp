// The command line of cmif-sim: its options, help and usage errors.
#include "shell.h"

namespace
{

struct Misuse {
    const char *line, *error;
};

constexpr Misuse misuses[] = {
    {"$S --verbose", "unknown option '--verbose' for 'cmif-sim'\n"},
    {"$S nothing", "unknown command 'nothing' in 'cmif-sim'\n"},
    {"$S -- run -- true", "unexpected argument '--' for 'cmif-sim run'\n"},
    {"$S run cmifctl", "unexpected argument 'cmifctl' for 'cmif-sim run'\n"},
    {"$S run --bogus", "unknown option '--bogus' for 'cmif-sim run'\n"},
    {"$S run --bogus$(printf '\\033')", "unknown option '--bogus?' for 'cmif-sim run'\n"},
    {"$S serve -- true", "unexpected argument 'true' for 'cmif-sim serve'\n"},
    {"$S run --no-at --no-qmi", "--no-at and --no-qmi exclude each other\n"},
    {"$S run --seed x", "invalid --seed 'x'\n  A whole number from 0 to 4294967295.\n"},
    {"$S run --seed -1", "invalid --seed '-1'\n  A whole number from 0 to 4294967295.\n"},
    {"$S run --seed 4294967296",
     "invalid --seed '4294967296'\n  A whole number from 0 to 4294967295.\n"},
    {"$S run --pace soon", "invalid --pace 'soon'\n  A number from 0 to 1000.\n"},
    {"$S run --pace ''", "invalid --pace ''\n  A number from 0 to 1000.\n"},
    {"$S run --pace -1", "invalid --pace '-1'\n  A number from 0 to 1000.\n"},
    {"$S run --pace -0.001", "invalid --pace '-0.001'\n  A number from 0 to 1000.\n"},
    {"$S run --pace 1000.001", "invalid --pace '1000.001'\n  A number from 0 to 1000.\n"},
    {"$S run --pace 1e10", "invalid --pace '1e10'\n  A number from 0 to 1000.\n"},
    {"$S run --pace 1e999", "invalid --pace '1e999'\n  A number from 0 to 1000.\n"},
    {"$S run --pace inf", "invalid --pace 'inf'\n  A number from 0 to 1000.\n"},
    {"$S run --pace nan", "invalid --pace 'nan'\n  A number from 0 to 1000.\n"},
    {"$S run --pace 0.1x", "invalid --pace '0.1x'\n  A number from 0 to 1000.\n"},
    {"$S serve --pace 1001", "invalid --pace '1001'\n  A number from 0 to 1000.\n"},
};

TEST(Options, AreRefusedWithStatus2AndAReason)
{
    for (const Misuse &misuse : misuses) {
        const Outcome refused = shell(misuse.line);
        EXPECT_EQ(refused.status, 2) << misuse.line;
        EXPECT_EQ(refused.output, "") << misuse.line;
        EXPECT_TRUE(refused.errors.starts_with(std::string("cmif-sim: ") + misuse.error))
            << misuse.line << refused.errors;
    }
}

TEST(Options, AreRequiredWhenNoneAreGiven)
{
    const Outcome refused = shell("$S");
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.output, "");
    EXPECT_TRUE(contains(refused.errors, "Usage: cmif-sim [OPTIONS] COMMAND")) << refused.errors;
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
    EXPECT_TRUE(contains(help.output, "serve this system's queues until stopped\n")) << help.output;
    EXPECT_EQ(shell("$S --version").output.rfind("cmif-sim 1.", 0), 0U);
}

TEST(Options, HaveAHelpForEachCommand)
{
    const Outcome run = shell("$S run --help");
    EXPECT_EQ(run.status, 0);
    for (const char *part :
         {"Usage: cmif-sim [OPTIONS] run ", " [-- PROGRAM [ARGUMENT...]]\n", "--pace FACTOR ",
          "factor on the modem's delays, 0 to 1000: ", "--seed N ", "--verbose ",
          "Example:\n  cmif-sim run -- cmifctl status\n", "The exit status is the program's.\n"})
        EXPECT_TRUE(contains(run.output, part)) << part << run.output;
    const Outcome serve = shell("$S serve --help");
    EXPECT_EQ(serve.status, 0);
    EXPECT_TRUE(contains(serve.output, "Stops on SIGTERM and SIGINT. ")) << serve.output;
}

TEST(Options, LeaveTheProgramsOwnOptionsAlone)
{
    EXPECT_EQ(shell("$S run --pace 0 -- printf %s --version").output, "--version");
}

TEST(Options, HelpEndsWithStatus1WhenItCannotBeWritten)
{
    const Outcome unwritten = shell("$S manual >/dev/full");
    EXPECT_EQ(unwritten.status, 1);
    EXPECT_TRUE(contains(unwritten.errors, "standard output can't be written")) << unwritten.errors;
}

} // namespace
