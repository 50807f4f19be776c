// What cmifctl shows: text made safe, sections and tables, documents, trace lines.
#include "client/trace_filter.h"
#include "cmifctl/output/enums.h"
#include "cmifctl/output/report.h"
#include "cmifctl/output/text.h"
#include "cmifctl/output/text_report.h"

#include <gtest/gtest.h>

namespace
{

using namespace cmifctl;

TEST(Safe, KeepsTextAndHidesNothing)
{
    EXPECT_EQ(safe("Grüße aus Zürich: 20 €"), "Grüße aus Zürich: 20 €");
    EXPECT_EQ(safe(""), "");
}

TEST(Safe, ShowsWhatATerminalWouldActOn)
{
    EXPECT_EQ(safe("a\033[31mb"), "a\\x1b[31mb");
    EXPECT_EQ(safe("a\x7f"), "a\\x7f");
    EXPECT_EQ(safe("a\xc2\x9b"
                   "b"),
              "a\\u{9b}b"); // C1 control sequence introducer
    EXPECT_EQ(safe("a\xe2\x80\xae"
                   "b"),
              "a\\u{202e}b"); // right to left
}

TEST(Safe, ShowsBytesThatAreNoUtf8)
{
    EXPECT_EQ(safe("a\xff\xfe"), "a\\xff\\xfe");
    EXPECT_EQ(safe("\xc3"), "\\xc3");                   // cut off
    EXPECT_EQ(safe("\xc0\xaf"), "\\xc0\\xaf");          // too long a form
    EXPECT_EQ(safe("\xed\xa0\x80"), "\\xed\\xa0\\x80"); // surrogate
    EXPECT_EQ(safe("\xe2\x82z"), "\\xe2\\x82z");
}

TEST(Safe, JoinsOrKeepsLines)
{
    EXPECT_EQ(safe("a\nb\tc\r"), "a b c ");
    EXPECT_EQ(safe("a\nb", Lines::kept), "a\nb");
}

TEST(Cut, EndsInDotsWhenTooWide)
{
    EXPECT_EQ(cut("abcdef", 6), "abcdef");
    EXPECT_EQ(cut("abcdefg", 6), "abc...");
    EXPECT_EQ(cut("äöüßabc", 6), "äöü...");
    EXPECT_EQ(cut("abcdef", 2), "..");
    EXPECT_EQ(cut("abcdef", 0), "");
    EXPECT_EQ(padded("äö", 4), "äö  ");
}

TEST(IsoTime, ReadsServiceCentreStamps)
{
    EXPECT_EQ(iso_time("24/03/01,08:00:05+04"), "2024-03-01T08:00:05+01:00");
    EXPECT_EQ(iso_time("24/03/01,08:00:05-22"), "2024-03-01T08:00:05-05:30");
}

TEST(IsoTime, RefusesAnythingElse)
{
    for (const char *stamp : {"", "yesterday", "24/13/01,08:00:05+04", "24/03/01,08:00:05",
                              "24/03/01,08:00:05+04 ", "24/03/01,08:61:05+04"})
        EXPECT_FALSE(iso_time(stamp)) << stamp;
}

TEST(Numbers, AreTakenWholeOrNotAtAll)
{
    EXPECT_EQ(whole_number("-71"), -71);
    EXPECT_EQ(whole_number("+7"), 7);
    EXPECT_FALSE(whole_number("7 "));
    EXPECT_FALSE(whole_number(""));
    EXPECT_FALSE(whole_number("0x10"));
    EXPECT_FALSE(whole_number("99999999999999999999"));
    EXPECT_EQ(decimal_number("8.5"), 8.5);
    EXPECT_FALSE(decimal_number("nan"));
    EXPECT_FALSE(decimal_number("1e5"));
}

TEST(Duration, CountsDays)
{
    EXPECT_EQ(duration(0), "00:00:00");
    EXPECT_EQ(duration(3725), "01:02:05");
    EXPECT_EQ(duration(86400 * 3 + 59), "3 d 00:00:59");
}

// ---- report ----

Report example()
{
    Report report;
    report.field("last_known", {"operator", "Test"});
    report.field("last_known", {"rssi", -71, "dBm"});
    report.field("last_known", {"imei", nullptr});
    report.field("sim", {"state", enumeration(names::sim_state, 3)});
    report.field("sim", {"uptime", 90, "s", "00:01:30"});
    report.field("sim", {"open", false});
    report.field("sim", {"internal", 1, "", "", true});
    return report;
}

TEST(People, AlignsSectionsAndLeavesOutWhatIsEmpty)
{
    EXPECT_EQ(people(example(), 0, false), "  ----------------------\n"
                                           "  Last known | operator: Test\n"
                                           "             |     rssi: -71 dBm\n"
                                           "  ----------------------\n"
                                           "  SIM        |    state: PIN required\n"
                                           "             |   uptime: 00:01:30\n"
                                           "             |     open: no\n");
}

TEST(People, ColoursTitlesOnly)
{
    Report report;
    report.field("sim", {"a", "b"});
    EXPECT_EQ(people(report, 0, true), "  --------\n  \033[1mSIM\033[0m | a: b\n");
}

TEST(People, PutsFurtherLinesUnderTheFirst)
{
    Report report;
    report.field("sms", {"text", "one\ntwo\033"});
    EXPECT_EQ(people(report, 0, false), "  -----------\n"
                                        "  SMS | text: one\n"
                                        "      |       two\\x1b\n");
}

TEST(People, FitsTablesToTheTerminal)
{
    Report report;
    report.table({"rows",
                  {{"id", "ID"}, {"text", "TEXT"}},
                  Json::array({{{"id", 12}, {"text", "a long\nline of text"}},
                               {{"id", 3}, {"text", nullptr}}})});
    EXPECT_EQ(people(report, 0, false), "ID  TEXT\n12  a long line of text\n3\n");
    EXPECT_EQ(people(report, 12, false), "ID  TEXT\n12  a lon...\n3\n");
}

TEST(People, KeepsSomeOfTheLastColumnOnANarrowTerminal)
{
    Report report;
    report.table({"rows",
                  {{"from", "FROM"}, {"text", "TEXT"}},
                  Json::array({{{"from", "somebody with a name"}, {"text", "a line of text"}}})});
    EXPECT_EQ(people(report, 20, false), "FROM        TEXT\nsomebod...  a lin...\n");
}

TEST(Document, IsTyped)
{
    EXPECT_EQ(example().document(),
              Json::parse(R"({"last_known": {"operator": "Test", "rssi_dbm": -71, "imei": null},
                              "sim": {"state": {"code": 3, "name": "PIN required"},
                                      "uptime_s": 90, "open": false, "internal": 1}})"));
}

TEST(Document, IsValidWhateverTheBytes)
{
    const std::string text = printed({{"text", "a\xff\xfe\n"}});
    EXPECT_EQ(Json::parse(text)["text"], "a\xef\xbf\xbd\xef\xbf\xbd\n");
}

TEST(Enumeration, KnowsNamesAndNumbers)
{
    EXPECT_EQ(enumeration(names::sim_state, 9), Json::parse(R"({"code": 9, "name": null})"));
    EXPECT_EQ(named(names::on_off, "1"), Json::parse(R"({"code": 1, "name": "on"})"));
    EXPECT_EQ(named(names::on_off, "x"), Json::parse(R"({"code": null, "name": "x"})"));
    EXPECT_EQ(code_of(names::functionality, "offline"), 4);
    EXPECT_EQ(code_of(names::functionality, "4"), 4);
    EXPECT_FALSE(code_of(names::functionality, "2"));
}

// ---- trace lines ----

TEST(Trace, MasksSecretsOnly)
{
    EXPECT_EQ(masked_line("set_string=1234", true), "set_string=****");
    EXPECT_EQ(masked_line("set_string2=12345678", true), "set_string2=****");
    EXPECT_EQ(masked_line("set_string=1234", false), "set_string=1234");
    EXPECT_EQ(masked_line("type mod_id=12", true), "type mod_id=12");
    EXPECT_EQ(masked_line("[CMIF-QMI] - f password = geheim", false),
              "[CMIF-QMI] - f password = ****");
}

TEST(Trace, ShowsWhatATerminalWouldActOn)
{
    testing::internal::CaptureStderr();
    TraceFilter filter(false);
    filter.feed("operator \033]0;title\007\n\xff");
    filter.finish();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "operator \\x1b]0;title\\x07\n\\xff\n");
}

TEST(Trace, MasksLinesThatArriveInPieces)
{
    testing::internal::CaptureStderr();
    TraceFilter filter(true);
    filter.feed("set_str");
    filter.feed("ing=12");
    filter.feed("34\nkey msqid=5\nset_string2=9");
    filter.finish();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "set_string=****\nkey msqid=5\nset_string2=****\n");
}

} // namespace
