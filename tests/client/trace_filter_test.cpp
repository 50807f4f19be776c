// The library's lines on their way to the user, without PINs and passwords.
#include "client/trace_filter.h"

#include <gtest/gtest.h>
#include <vector>

namespace
{

using namespace client;

struct MaskCase {
    const char *line;
    bool secret;
    const char *masked;
};

TEST(Trace, MasksSecretsOnly)
{
    constexpr const char *password_line = "[CMIF-QMI] - f password = geheim";
    // clang-format off
    const MaskCase cases[] = {
        {"set_string=1234",      true,  "set_string=****"},
        {"set_string2=12345678", true,  "set_string2=****"},
        {"set_string=1234",      false, "set_string=1234"},
        {"type mod_id=12",       true,  "type mod_id=12"},
        {password_line,          false, "[CMIF-QMI] - f password = ****"},
        {password_line,          true,  "[CMIF-QMI] - f password = ****"},
    };
    // clang-format on
    for (const MaskCase &row : cases)
        EXPECT_EQ(mask_secrets(row.line, row.secret), row.masked);
}

TEST(Trace, MasksLinesThatArriveInPieces)
{
    std::vector<std::string> lines;
    TraceFilter filter(true, [&lines](std::string_view line) { lines.emplace_back(line); });
    filter.feed("set_str");
    filter.feed("ing=12");
    filter.feed("34\nkey msqid=5\n\nset_string2=9");
    EXPECT_EQ(lines, (std::vector<std::string>{"set_string=****", "key msqid=5", ""}));
    filter.finish();
    filter.finish();
    EXPECT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines.back(), "set_string2=****");
}

} // namespace
