// How a line of the scenario language is read, and what its errors name.
#include "scenario/command.h"
#include "scenario/words.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

using namespace scenario;
using namespace std::chrono_literals;

std::vector<std::string> texts(std::string_view line)
{
    std::vector<std::string> all;
    for (Words words(line); !words.at_end();)
        all.push_back(words.take("a word").text);
    return all;
}

// "column: message" of the error that `read` fails with.
template <class Read>
std::string error_of(std::string_view line, Read read)
{
    try {
        Words words(line);
        read(words);
        words.expect_end();
    } catch (const ScriptError &error) {
        return std::to_string(error.column()) + ": " + error.what();
    }
    return "no error";
}

TEST(Words, AreSplitAtSpacesAndTabs)
{
    EXPECT_EQ(texts("  sms\tinject +1  hello "),
              (std::vector<std::string>{"sms", "inject", "+1", "hello"}));
    EXPECT_EQ(texts(""), std::vector<std::string>{});
}

TEST(Words, EndAtAComment)
{
    EXPECT_EQ(texts("radio off # by a drawer"), (std::vector<std::string>{"radio", "off"}));
    EXPECT_EQ(texts("a#b"), std::vector<std::string>{"a#b"});
}

TEST(Words, MayBeQuoted)
{
    EXPECT_EQ(texts(R"(say "two words # and \"quotes\" and \\" end)"),
              (std::vector<std::string>{"say", R"(two words # and "quotes" and \)", "end"}));
    EXPECT_EQ(texts(R"("")"), std::vector<std::string>{""});
    EXPECT_EQ(error_of(R"(say "open)", [](Words &) {}), "5: the closing \" is missing");
}

TEST(Words, AreMissingAfterTheEndOfTheLine)
{
    EXPECT_EQ(error_of("deny", [](Words &words) { words.take("x"), words.take("a cause"); }),
              "5: a cause is missing");
}

TEST(Words, AreRefusedWhenUnexpected)
{
    EXPECT_EQ(error_of("a b", [](Words &words) { words.take("x"); }), "3: unexpected 'b'");
}

TEST(Words, AreShortenedInErrors)
{
    const std::string shown(60, 'x');
    const auto refuse = [](Words &words) { words.take("x"), words.refuse("x", "y"); };
    EXPECT_EQ(error_of(shown, refuse), "1: x is y, not '" + shown + "'");
    EXPECT_EQ(error_of(shown + "xx", refuse), "1: x is y, not '" + shown + "...'");
    EXPECT_EQ(error_of("a " + shown + "xx", [](Words &words) { words.take("x"); }),
              "3: unexpected '" + shown + "...'");
}

TEST(Numbers, AreWholeAndInTheirRange)
{
    const auto read = [](Words &words) { words.take_number("the cause", 1, 95); };
    EXPECT_EQ(error_of("1", read), "no error");
    EXPECT_EQ(error_of("95", read), "no error");
    for (const std::string text : {"0", "96", "1x", "x", "1.5", "99999999999"})
        EXPECT_EQ(error_of(" " + text, read),
                  "2: the cause is a whole number from 1 to 95, not '" + text + "'");
    EXPECT_EQ(Words("-118").take_number("x", -140, -44), -118);
}

TEST(Digits, AreCounted)
{
    const auto read = [](Words &words) { words.take_digits("the network", 5, 6); };
    EXPECT_EQ(error_of("00102", read), "no error");
    EXPECT_EQ(error_of("001022", read), "no error");
    for (const std::string text : {"0010", "0010222", "0010x", "-0010"})
        EXPECT_EQ(error_of(text, read), "1: the network is 5 to 6 digits, not '" + text + "'");
}

TEST(Choices, AreListedInTheError)
{
    const auto read = [](Words &words) { words.take_one_of("coverage", {"none", "full"}); };
    EXPECT_EQ(error_of("full", read), "no error");
    EXPECT_EQ(error_of("half", read), "1: coverage is one of: none, full, not 'half'");
}

TEST(Durations, HaveAUnit)
{
    EXPECT_EQ(Words("250ms").take_duration("x"), 250ms);
    EXPECT_EQ(Words("1.5s").take_duration("x"), 1500ms);
    EXPECT_EQ(Words("2min").take_duration("x"), 2min);
    EXPECT_EQ(Words("1440min").take_duration("x"), 24h);
    const auto read = [](Words &words) { words.take_duration("the delay"); };
    for (const std::string text : {"5", "s", "-1s", "1.2.3s", "1h", "1441min", "infs", "1e9s"})
        EXPECT_EQ(error_of(text, read), "1: the delay is a number with its unit: 250ms, 1.5s, "
                                        "2min; at most 1440min, not '" +
                                            text + "'");
}

TEST(Rest, IsJoinedByOneSpace)
{
    EXPECT_EQ(Words(R"(a  "b  c"   d)").take_rest("the text"), "a b  c d");
}

// What a parser asks for where the line ends.
TEST(Words, OfferWhatCouldFollow)
{
    const auto offers_after = [](std::string_view line) {
        Words words(line);
        const Commands commands{{"go", "", "moves", [](Words &rest) -> Action {
                                     rest.take_one_of("where", {"left", "right"});
                                     if (rest.take_if("by"))
                                         rest.take_number("how far", 1, 9);
                                     rest.next_is("fast");
                                     return {};
                                 }}};
        try {
            scenario::parse_command(commands, words);
        } catch (const ScriptError &) {
        }
        std::string text;
        for (const Words::Offer &offer : words.offers())
            text += offer.text + (offer.description.empty() ? "," : ":" + offer.description + ",");
        return text;
    };
    EXPECT_EQ(offers_after(""), "go:moves,");
    EXPECT_EQ(offers_after("go"), "left,right,");
    EXPECT_EQ(offers_after("go left"), "by,fast,");
    EXPECT_EQ(offers_after("go left by"), "");
    EXPECT_EQ(offers_after("go left by 3"), "fast,");
    EXPECT_EQ(offers_after("go up"), "");
    EXPECT_EQ(offers_after("went"), "");
}

TEST(Commands, AreFoundByTheirFirstWord)
{
    int done = 0;
    const Commands commands{
        {"set", "N", "sets",
         [&](Words &words) -> Action {
             const int value = words.take_number("N", 0, 9);
             return [&done, value] { done = value; };
         }},
        {"clear", "", "clears", [&](Words &) -> Action { return [&done] { done = -1; }; }}};
    const auto run = [&](Words &words) { parse_command(commands, words)(); };
    EXPECT_EQ(error_of("set 7", run), "no error");
    EXPECT_EQ(done, 7);
    EXPECT_EQ(error_of("# nothing", run), "no error");
    EXPECT_EQ(error_of("sett 8", run), "1: unknown command 'sett'; it is one of: set, clear");
    EXPECT_EQ(error_of("set 8 9", run), "7: unexpected '9'; the command is: set N");
    EXPECT_EQ(error_of("clear 8", run), "7: unexpected '8'; the command is: clear");
    EXPECT_EQ(done, 7);
}

} // namespace
