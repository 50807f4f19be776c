// Lines are JSON whatever they hold.
#include "cmif-record/json_line.h"

#include <gtest/gtest.h>

namespace
{

using cmif_record::is_utf8;
using cmif_record::JsonLine;

TEST(JsonLine, HoldsMembersInTheirOrder)
{
    JsonLine line;
    line.add_seconds("time", 1'002'003'999);
    line.add("code", -12);
    line.add_null("name");
    line.open("fields");
    line.add("pin", "1234");
    line.close();
    line.open("none");
    line.close();
    line.add_hex("payload", std::string_view("\0\x7F\xff", 3));
    EXPECT_EQ(line.finish(), R"({"time":1.002003,"code":-12,"name":null,)"
                             R"("fields":{"pin":"1234"},"none":{},"payload":"007fff"})"
                             "\n");
}

TEST(JsonLine, EscapesText)
{
    JsonLine line;
    line.add("a", "\"\\\n\x01\x7Fü");
    EXPECT_EQ(line.finish(), R"({"a":"\"\\\u000a\u0001\u007fü"})"
                             "\n");
}

TEST(JsonLine, WritesTextThatIsNotUtf8AsHex)
{
    JsonLine line;
    line.add("a", "x\xFC");
    line.add("b", "y");
    EXPECT_EQ(line.finish(), R"({"a":{"hex":"78fc"},"b":"y"})"
                             "\n");
}

TEST(Utf8, IsDistinguishedFromOtherBytes)
{
    for (const char *text : {"", "a", "\xC2\x80", "\xE0\xA0\x80", "\xED\x9F\xBF",
                             "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(is_utf8(text)) << text;
    for (const char *text :
         {"\x80", "\xC3", "\xC0\x80", "\xC1\xBF", "\xE0\x9F\x80", "\xED\xA0\x80",
          "\xF0\x8F\x80\x80", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xE2\x82", "a\xFF"})
        EXPECT_FALSE(is_utf8(text)) << text;
}

} // namespace
