// What cmifctl prints: escaped text, sections and tables, documents.
#include "cli/numbers.h"
#include "cmifctl/output/enums.h"
#include "cmifctl/output/flat_text.h"
#include "cmifctl/output/json_text.h"
#include "cmifctl/output/report.h"
#include "cmifctl/output/terminal.h"
#include "cmifctl/output/terminal_text.h"
#include "cmifctl/output/text_report.h"
#include "cmifctl/output/times.h"

#include <gtest/gtest.h>

namespace
{

using namespace cmifctl;

TEST(EscapeControls, KeepsText)
{
    EXPECT_EQ(escape_controls("Grüße aus Zürich: 20 €"), "Grüße aus Zürich: 20 €");
    EXPECT_EQ(escape_controls(""), "");
}

TEST(EscapeControls, EscapesTerminalSequences)
{
    EXPECT_EQ(escape_controls("a\033[31mb"), "a\\x1b[31mb");
    EXPECT_EQ(escape_controls("a\x7f"), "a\\x7f");
    EXPECT_EQ(escape_controls("a\xc2\x9b"
                              "b"),
              "a\\u{9b}b"); // C1 control sequence introducer
    EXPECT_EQ(escape_controls("a\xe2\x80\xae"
                              "b"),
              "a\\u{202e}b"); // right to left
}

TEST(EscapeControls, EscapesInvalidUtf8)
{
    EXPECT_EQ(escape_controls("a\xff\xfe"), "a\\xff\\xfe");
    EXPECT_EQ(escape_controls("\xc3"), "\\xc3");                   // cut off
    EXPECT_EQ(escape_controls("\xc0\xaf"), "\\xc0\\xaf");          // too long a form
    EXPECT_EQ(escape_controls("\xed\xa0\x80"), "\\xed\\xa0\\x80"); // surrogate
    EXPECT_EQ(escape_controls("\xe2\x82z"), "\\xe2\\x82z");
}

TEST(EscapeControls, JoinsOrKeepsLines)
{
    EXPECT_EQ(escape_controls("a\nb\tc\r"), "a b c ");
    EXPECT_EQ(escape_controls("a\nb", Lines::kept), "a\nb");
}

TEST(Truncated, EndsInDotsWhenTooWide)
{
    EXPECT_EQ(truncated("abcdef", 6), "abcdef");
    EXPECT_EQ(truncated("abcdefg", 6), "abc...");
    EXPECT_EQ(truncated("äöüßabc", 6), "äöü...");
    EXPECT_EQ(truncated("abcdef", 2), "..");
    EXPECT_EQ(truncated("abcdef", 0), "");
    EXPECT_EQ(padded("äö", 4), "äö  ");
}

TEST(IsoTime, ReadsServiceCentreStamps)
{
    EXPECT_EQ(iso_time("24/03/01,08:00:05+04"), "2024-03-01T08:00:05+01:00");
    EXPECT_EQ(iso_time("24/03/01,08:00:05-22"), "2024-03-01T08:00:05-05:30");
    EXPECT_EQ(short_time("24/03/01,08:00:05-22"), "2024-03-01 08:00");
    EXPECT_EQ(short_time("yesterday"), "");
}

TEST(IsoTime, RefusesAnythingElse)
{
    for (const char *stamp : {"", "yesterday", "24/13/01,08:00:05+04", "24/03/01,08:00:05",
                              "24/03/01,08:00:05+04 ", "24/03/01,08:61:05+04"})
        EXPECT_FALSE(iso_time(stamp)) << stamp;
}

TEST(Numbers, AreParsedOnlyIfComplete)
{
    EXPECT_EQ(cli::whole_number("-71"), -71);
    EXPECT_EQ(cli::whole_number("+7"), 7);
    EXPECT_FALSE(cli::whole_number("7 "));
    EXPECT_FALSE(cli::whole_number(""));
    EXPECT_FALSE(cli::whole_number("0x10"));
    EXPECT_FALSE(cli::whole_number("99999999999999999999"));
    EXPECT_EQ(cli::decimal_number("8.5"), 8.5);
    EXPECT_FALSE(cli::decimal_number("nan"));
    EXPECT_FALSE(cli::decimal_number("1e5"));
}

TEST(Duration, CountsDays)
{
    EXPECT_EQ(duration(0), "00:00:00");
    EXPECT_EQ(duration(3725), "01:02:05");
    EXPECT_EQ(duration(86400 * 3 + 59), "3 d 00:00:59");
}

TEST(TraceLine, IsEscaped)
{
    testing::internal::CaptureStderr();
    show_trace_line("operator \033]0;title\007");
    show_trace_line("\xff");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "operator \\x1b]0;title\\x07\n\\xff\n");
}

// ---- report ----

Report example()
{
    Report report;
    report.field("last_known", {"operator", "Test"});
    report.field("last_known", {"rssi", -71, "dBm"});
    report.field("last_known", {"imei", nullptr});
    report.field("sim", coded("state", enums::sim_state, 1));
    report.field("sim", coded("state", enums::sim_state, 3)); // instead of the first
    report.field("sim", {"uptime", 90, "s", "00:01:30"});
    report.field("sim", {"open", false});
    report.field("sim", {.key = "internal", .value = 1, .hidden = true});
    return report;
}

TEST(TextReport, AlignsSectionsWithoutEmptyFields)
{
    EXPECT_EQ(render_text(example(), 0, false), "  ----------------------\n"
                                                "  Last known | operator: Test\n"
                                                "             |     rssi: -71 dBm\n"
                                                "  ----------------------\n"
                                                "  SIM        |    state: PIN required\n"
                                                "             |   uptime: 00:01:30\n"
                                                "             |     open: no\n");
}

TEST(TextReport, ColoursTitlesOnly)
{
    Report report;
    report.field("sim", {"a", "b"});
    EXPECT_EQ(render_text(report, 0, true), "  --------\n  \033[1mSIM\033[0m | a: b\n");
}

TEST(TextReport, PutsFurtherLinesUnderTheFirst)
{
    Report report;
    report.field("sms", {"text", "one\ntwo\033"});
    EXPECT_EQ(render_text(report, 0, false), "  -----------\n"
                                             "  SMS | text: one\n"
                                             "      |       two\\x1b\n");
}

TEST(TextReport, FitsTablesToTheTerminal)
{
    Report report;
    report.table({"rows",
                  {{"id", "ID"}, {"text", "TEXT"}},
                  Json::array({{{"id", 12}, {"text", "a long\nline of text"}},
                               {{"id", 3}, {"text", nullptr}}})});
    EXPECT_EQ(render_text(report, 0, false), "ID  TEXT\n12  a long line of text\n3\n");
    EXPECT_EQ(render_text(report, 12, false), "ID  TEXT\n12  a lon...\n3\n");
}

TEST(TextReport, KeepsSomeOfTheLastColumnOnANarrowTerminal)
{
    Report report;
    report.table({"rows",
                  {{"from", "FROM"}, {"text", "TEXT"}},
                  Json::array({{{"from", "a sender with a name"}, {"text", "a line of text"}}})});
    EXPECT_EQ(render_text(report, 20, false), "FROM        TEXT\na sende...  a lin...\n");
}

TEST(TextReport, ShowsALabelInsteadOfTheKey)
{
    Report report;
    report.field("daemons", {.key = "qmi_answers", .value = true, .text = "yes!", .label = "QMI"});
    EXPECT_EQ(render_text(report, 0, false), "  --------------\n  Daemons | QMI: yes!\n");
    EXPECT_EQ(report.document(), Json::parse(R"({"daemons": {"qmi_answers": true}})"));
}

TEST(Document, IsTyped)
{
    EXPECT_EQ(example().document(),
              Json::parse(R"({"last_known": {"operator": "Test", "rssi_dbm": -71, "imei": null},
                              "sim": {"state": {"code": 3, "name": "pin_required"},
                                      "uptime_s": 90, "open": false, "internal": 1}})"));
}

TEST(Document, IsValidWhateverTheBytes)
{
    const std::string text = render_json({{"text", "a\xff\xfe\n"}});
    EXPECT_EQ(Json::parse(text)["text"], "a\xef\xbf\xbd\xef\xbf\xbd\n");
}

TEST(Document, EscapesControlsWithoutLosingThem)
{
    const std::string text = "\x7f|\xc2\x9b|\xe2\x80\xae|\xf3\xa0\x80\x81|\xff|ü";
    const std::string written = render_json({{"text", text}}, Layout::one_line);
    EXPECT_EQ(written, R"({"text":"\u007f|\u009b|\u202e|\udb40\udc01|\ufffd|ü"})"
                       "\n");
    EXPECT_EQ(Json::parse(written)["text"],
              "\x7f|\xc2\x9b|\xe2\x80\xae|\xf3\xa0\x80\x81|\xef\xbf\xbd|ü");
}

const Json nested = Json::parse(R"({"a": {"code": 3, "name": "x_y"}, "b": [{"t": "one\ntwo\\"}, 5],
                                    "c": null, "d": {"code": 9, "name": null}, "e": true})");

TEST(KeyValue, HasALineForEachKnownValue)
{
    EXPECT_EQ(render_keyvalue(nested), "a.code: 3\na.name: x_y\nb.0.t: one\\ntwo\\\\\nb.1: 5\n"
                                       "d.code: 9\ne: true\n");
}

TEST(Fields, AreAloneOnTheirLines)
{
    EXPECT_EQ(render_fields(nested, {"a", "d", "c", "b.0.t", "b.1", "e", "a.code"}),
              "x_y\n9\n\none\\ntwo\\\\\n5\ntrue\n3\n");
    EXPECT_EQ(render_fields(nested, {"b"}), "[{\"t\":\"one\\ntwo\\\\\"},5]\n");
}

TEST(Fields, ListWhatThereIs)
{
    for (const char *path : {"z", "a.z", "b.2", "b.x", "", "a."}) {
        try {
            render_fields(nested, {path});
            FAIL() << path;
        } catch (const Failure &failure) {
            EXPECT_EQ(failure.status(), Exit::usage);
            EXPECT_EQ(failure.hint(),
                      "There is: a.code, a.name, b.0.t, b.1, c, d.code, d.name, e.");
        }
    }
}

TEST(Report, HasObjectsInASection)
{
    Report report;
    report.field("data", {"context.apn", "x"});
    report.field("data", {"context.more.age", 3, "s"});
    report.result("connected", "The connection is up.");
    EXPECT_EQ(report.document(),
              Json::parse(R"({"data": {"context": {"apn": "x", "more": {"age_s": 3}}},
                              "result": "connected"})"));
    EXPECT_EQ(render_text(report, 0, false), "  ------------------------\n"
                                             "  Data |      context apn: x\n"
                                             "       | context more age: 3 s\n"
                                             "The connection is up.\n");
}

TEST(Enumeration, KnowsNamesAndNumbers)
{
    EXPECT_EQ(enumeration(enums::sim_state, 9), Json::parse(R"({"code": 9, "name": null})"));
    EXPECT_EQ(enumeration(enums::registration, "9"), Json::parse(R"({"code": 9, "name": null})"));
    EXPECT_EQ(enumeration(enums::on_off, "1"), Json::parse(R"({"code": 1, "name": "on"})"));
    EXPECT_EQ(enumeration(enums::sim_state, "SIM PIN"),
              Json::parse(R"({"code": 3, "name": "pin_required"})"));
    EXPECT_EQ(enumeration(enums::on_off, "x"),
              Json::parse(R"({"code": null, "name": null, "text": "x"})"));
    EXPECT_EQ(enumeration(enums::on_off, nullptr), nullptr);
    EXPECT_EQ(cli::code_of(enums::functionality, "offline"), 4);
    EXPECT_EQ(cli::code_of(enums::functionality, "radio_off"), 4);
    EXPECT_EQ(cli::code_of(enums::functionality, "4"), 4);
    EXPECT_FALSE(cli::code_of(enums::functionality, "2"));
    EXPECT_FALSE(cli::code_of(enums::registration, "")); // no word
}

TEST(Enumeration, HasAHumanReadableText)
{
    EXPECT_EQ(enumeration_text(enums::sim_state, 3), "PIN required");
    EXPECT_EQ(enumeration_text(enums::sim_state, "PH-NET PIN"), "network locked");
    EXPECT_EQ(enumeration_text(enums::registration, 5), "registered (roaming)");
    EXPECT_EQ(enumeration_text(enums::sim_state, 9), "unknown (9)");
    EXPECT_EQ(enumeration_text(enums::sim_state, "ODD"), "ODD");
    EXPECT_EQ(enumeration_text(enums::sim_state, nullptr), "");
}

} // namespace
