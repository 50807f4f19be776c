// Help and manual, from a table.
#include "cli/help.h"
#include "cli/manual.h"
#include "sample_table.h"

#include <gtest/gtest.h>

namespace
{

TEST(Help, OfTheProgramIsGrouped)
{
    EXPECT_EQ(cli::help_text(sample, ""), R"(Usage: garden [OPTIONS] GROUP VERB [ARGS]

Look after a garden.

Commands:
  plant        put in a plant
  sing         sing
  run          run a tool

The garden's gate:
  gate open    open the gate
  gate unlock  unlock the gate
  gate show    show the gate

Options of every command:
  -c, --colour WHEN  colour of the output: red, blue
  -h, --help         show help
  -V, --version      show the version

Options of commands that only read:
  --repeat[=N]       repeat, N times if given

Examples:
  garden plant rose  one rose
  .dots 'and' \back  odd characters

Exit status:
  0  done
  9  frost
)");
}

TEST(Help, OfAGroupSeparatesReadingsFromActions)
{
    const std::string help = cli::help_text(sample, "gate");
    EXPECT_EQ(help.find("Usage: garden [OPTIONS] gate VERB [ARGS]\n\nThe garden's gate.\n\n"
                        "Reading:\n  gate show    show the gate\n\n"
                        "Actions:\n  gate open    open the gate\n  gate unlock  unlock the gate\n\n"
                        "Options of every command:\n"),
              0U)
        << help;
}

TEST(Help, OfACommandHasArgumentsAndAnExample)
{
    const std::string help = cli::help_text(sample, "plant");
    EXPECT_EQ(
        help.find("Usage: garden [OPTIONS] plant PLANT [COLOUR] [--depth CM] [--beside PLANT] "
                  "[--dry]\n\nPut in a plant.\nDigs first. Then waters.\n\nArguments:\n"
                  "  PLANT           which plant\n  [COLOUR]        its colour: red, blue\n"
                  "  --depth CM      how deep\n  --beside PLANT  which neighbours\n"
                  "  --dry           without water\n\nExample:\n"
                  "  garden plant rose red --depth 3\n\nOptions of every command:\n"),
        0U)
        << help;
    EXPECT_EQ(cli::help_text(sample, "run")
                  .find("Usage: garden [OPTIONS] run [--quiet] "
                        "[-- TOOL [ARGUMENT...]]\n"),
              0U);
}

TEST(Help, ListsOptionsOfReadingsWhereTheyApply)
{
    const auto lists = [](const char *path) {
        return cli::help_text(sample, path).find("--repeat[=N] ") != std::string::npos;
    };
    EXPECT_TRUE(lists("gate"));
    EXPECT_TRUE(lists("gate show"));
    EXPECT_TRUE(lists("plant")); // without a plant it reads
    EXPECT_FALSE(lists("gate open"));
    EXPECT_FALSE(lists("run"));
}

TEST(Help, IsShortWithoutArguments)
{
    EXPECT_EQ(cli::short_help(sample), R"(Usage: garden [OPTIONS] GROUP VERB [ARGS]

Commands:
  plant  put in a plant
  gate   the garden's gate
  sing   sing
  run    run a tool

'garden GROUP --help' lists the commands of a group, 'garden --help' all of them.
)");
}

TEST(Manual, HasEverySection)
{
    const std::string page = cli::manual_page(sample);
    std::size_t at = 0;
    for (const char *section : {"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "COMMANDS",
                                "EXAMPLES", "EXIT STATUS", "ENVIRONMENT", "FILES", "SEE ALSO"}) {
        const std::size_t next = page.find(std::string("\n.SH ") + section + "\n");
        EXPECT_NE(next, std::string::npos) << section;
        EXPECT_GT(next, at) << section;
        at = next;
    }
}

TEST(Manual, HasTheDateOfTheSourcesWhereThatIsSet)
{
    setenv("SOURCE_DATE_EPOCH", "86400", 1);
    EXPECT_TRUE(cli::manual_page(sample).starts_with(".TH GARDEN 1 \"1970-01-02\" "));
    unsetenv("SOURCE_DATE_EPOCH");
    EXPECT_FALSE(cli::manual_page(sample).starts_with(".TH GARDEN 1 \"1970-01-02\" "));
}

TEST(Manual, EscapesCharactersThatTroffInterprets)
{
    const std::string page = cli::manual_page(sample);
    EXPECT_NE(page.find(".EX\n\\&.dots \\(aqand\\(aq \\eback\n.EE\n"), std::string::npos) << page;
    EXPECT_NE(page.find(".B \"\\-\\-repeat[=N]\"\nRepeat, N times if given.\n"), std::string::npos);
    EXPECT_NE(page.find("Digs first.\nThen waters.\n"), std::string::npos);
    EXPECT_NE(page.find(".EX\ngarden gate show \\-\\-repeat=2\n.EE\n"), std::string::npos);
}

} // namespace
