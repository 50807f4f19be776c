// Stand-ins have the form of what they replace, and tell nothing else.
#include "cmif-record/json_line.h"
#include "cmif-record/stand_in.h"

#include <cctype>
#include <gtest/gtest.h>
#include <set>

namespace
{

using cmif_record::stand_in;
using cmif_record::StandInKey;

constexpr StandInKey key{1, 2};

TEST(StandIn, KeepsLengthAndClasses)
{
    const std::string text = "aZ9 +1x%%\n0,\"";
    const std::string other = stand_in(key, text);
    ASSERT_EQ(other.size(), text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto was = static_cast<unsigned char>(text[i]);
        const auto is = static_cast<unsigned char>(other[i]);
        EXPECT_EQ(std::isdigit(was), std::isdigit(is)) << i;
        EXPECT_EQ(std::islower(was), std::islower(is)) << i;
        EXPECT_EQ(std::isupper(was), std::isupper(is)) << i;
        EXPECT_EQ(std::ispunct(was) != 0, std::ispunct(is) != 0) << i;
    }
    EXPECT_EQ(other.substr(3, 2), " +");
    EXPECT_EQ(other.substr(7, 3), "%%\n");
}

TEST(StandIn, IsNeverTheTextItself)
{
    for (int pin = 0; pin < 3000; ++pin) {
        const std::string text = std::to_string(10000 + pin).substr(1);
        EXPECT_NE(stand_in(key, text), text);
    }
}

TEST(StandIn, IsStableUnderOneKeyOnly)
{
    EXPECT_EQ(stand_in(key, "262011234567890"), stand_in(key, "262011234567890"));
    EXPECT_NE(stand_in(key, "262011234567890"), stand_in(key, "262011234567891"));
    EXPECT_NE(stand_in(key, "262011234567890"), stand_in({1, 3}, "262011234567890"));
    EXPECT_NE(stand_in(key, "262011234567890"), stand_in({0, 2}, "262011234567890"));
    EXPECT_NE(cmif_record::random_key(), cmif_record::random_key());
}

// Recordings by the manual clock are compared with earlier ones.
TEST(StandIn, IsTheSameInEveryVersion)
{
    EXPECT_EQ(stand_in(key, "1234"), "4929");
    EXPECT_EQ(stand_in(key, "262011234567890"), "069134864586889");
    EXPECT_EQ(stand_in(key, "Aunt Mildred, +49 151"), "Frdc Hksjqrv} +64 134");
}

TEST(StandIn, SpreadsOverAllValues)
{
    std::set<std::string> seen;
    for (int digit = 0; digit < 200; ++digit)
        seen.insert(stand_in({static_cast<std::uint64_t>(digit), 7}, "5"));
    EXPECT_EQ(seen.size(), 9U);
}

TEST(StandIn, IsValidUtf8WhereTheTextIs)
{
    for (const char *text : {"Grüße aus Zürich ☕", "пароль", "日本", "😀😁", "é"}) {
        const std::string other = stand_in(key, text);
        EXPECT_EQ(other.size(), std::string(text).size());
        EXPECT_NE(other, text);
        EXPECT_TRUE(cmif_record::is_utf8(other)) << text;
    }
    EXPECT_EQ(stand_in(key, "\xC3").size(), 1U);
    EXPECT_NE(stand_in(key, "\xFF\xFE"), "\xFF\xFE");
}

TEST(StandIn, LeavesWhatHasNothingToHide)
{
    for (const char *text : {"", " ", "+", "%%", "\n"})
        EXPECT_EQ(stand_in(key, text), text);
}

} // namespace
