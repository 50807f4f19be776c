// A scenario file: what it may hold, and how its errors are reported.
#include "scenario/script.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace
{

using namespace scenario;
using namespace std::chrono_literals;
using Moment = Step::Moment;

const Commands commands{{"say", "TEXT", "", [](Words &words) -> Action {
                             words.take_rest("the text");
                             return [] {};
                         }}};

std::string errors_of(std::string_view text)
{
    try {
        parse_script(text, "f", commands);
    } catch (const BadScript &bad) {
        return bad.what();
    }
    return "no error";
}

std::string errors_of_file(const std::string &path)
{
    try {
        read_script(path, commands);
    } catch (const BadScript &bad) {
        return bad.what();
    }
    return "no error";
}

TEST(Script, HasATimeOrAnEventForEachCommand)
{
    const Script script = parse_script("# what follows\n"
                                       "say a\r\n"
                                       "\n"
                                       "  at 1.5s say b # later\n"
                                       "every 2min say c\n"
                                       "when registered say d\n"
                                       "when request 12 say e\n"
                                       "when qmi-request 4 say f",
                                       "f", commands);
    ASSERT_EQ(script.size(), 6U);
    EXPECT_EQ(script[0].moment, Moment::start);
    EXPECT_EQ(script[0].line, 2U);
    EXPECT_EQ(script[1].moment, Moment::at);
    EXPECT_EQ(script[1].time, 1500ms);
    EXPECT_EQ(script[1].line, 4U);
    EXPECT_EQ(script[0].text, "say a");
    EXPECT_EQ(script[1].text, "at 1.5s say b");
    EXPECT_EQ(script[2].moment, Moment::every);
    EXPECT_EQ(script[2].time, 2min);
    EXPECT_EQ(script[3].moment, Moment::when);
    EXPECT_EQ(script[3].event, "registered");
    EXPECT_EQ(script[4].event, "request 12");
    EXPECT_EQ(script[5].event, "qmi-request 4");
    EXPECT_EQ(script[5].line, 8U);
}

TEST(Script, ReportsEverythingThatIsWrong)
{
    EXPECT_EQ(
        errors_of("say fine\nsya x\nat 5 say x\n  every 1ms say x\nwhen rain say x\n"),
        "f:2:1: unknown command 'sya'; it is one of: say\n"
        "f:3:4: the time is a number with its unit: 250ms, 1.5s, 2min; at most 1440min, not "
        "'5'\n"
        "f:4:9: the time between two is at least 10ms, not '1ms'\n"
        "f:5:6: the event is one of: registered, unregistered, connected, disconnected, "
        "sim-ready, searching, search-done, sms, down, up, request N, qmi-request N, not 'rain'");
}

TEST(Script, NamesWhatALineLacks)
{
    EXPECT_EQ(errors_of("at"), "f:1:3: the time is missing; it is a number with its unit: 250ms, "
                               "1.5s, 2min; at most 1440min");
    EXPECT_EQ(errors_of("every"), "f:1:6: the time is missing; it is a number with its unit: "
                                  "250ms, 1.5s, 2min; at most 1440min");
    EXPECT_EQ(errors_of("at 5s"), "f:1:6: a command is missing; it is one of: say");
    EXPECT_EQ(errors_of("when sms # then?"), "f:1:17: a command is missing; it is one of: say");
    EXPECT_EQ(errors_of("when request"),
              "f:1:13: the request's code is missing; it is a whole number from 1 to 255");
    EXPECT_EQ(errors_of("when request 0 say x"),
              "f:1:14: the request's code is a whole number from 1 to 255, not '0'");
    EXPECT_EQ(errors_of("say \"x"), "f:1:5: the closing \" is missing");
}

TEST(Script, MayBeEmpty)
{
    EXPECT_TRUE(parse_script("", "f", commands).empty());
    EXPECT_TRUE(parse_script("\n \n# nothing", "f", commands).empty());
}

TEST(Script, IsReadFromAFile)
{
    const std::string path = testing::TempDir() + "script_test.cmif";
    std::ofstream(path) << "say a\nat 1s say b\n";
    EXPECT_EQ(read_script(path, commands).size(), 2U);
    std::ofstream(path) << "wrong\n";
    EXPECT_EQ(errors_of_file(path), path + ":1:1: unknown command 'wrong'; it is one of: say");
    std::ofstream(path) << std::string(1024 * 1024, '#');
    EXPECT_EQ(errors_of_file(path), "no error");
    std::ofstream(path) << std::string(1024 * 1024 + 1, '#');
    EXPECT_EQ(errors_of_file(path), path + ": cannot be read: a scenario has at most 1 MiB");
    std::filesystem::remove(path);
}

TEST(Script, ReportsAFileThatCanNotBeRead)
{
    EXPECT_EQ(errors_of_file("/nowhere/s.cmif"),
              "/nowhere/s.cmif: cannot be read: No such file or directory");
    EXPECT_EQ(errors_of_file("/"), "/: cannot be read: Is a directory");
}

} // namespace
